/* The export mark of nx, for C and C++. */
#ifndef NX_EXPORT_H
#define NX_EXPORT_H

/** Marks what libnx.so exports; everything else in it is hidden. */
#define NX_API __attribute__((visibility("default")))

#endif
