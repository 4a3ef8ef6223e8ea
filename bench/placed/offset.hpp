// Puts the code of this library as many bytes after a line of the instruction cache.
#ifndef NX_BENCH_PLACED_OFFSET_HPP
#define NX_BENCH_PLACED_OFFSET_HPP

asm(".text\n\t.p2align 6\n\t.skip " NX_BENCH_OFFSET ", 0x90");

#endif
