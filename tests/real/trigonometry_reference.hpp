// The reduction of trigonometric arguments, and sine, cosine and tangent, as plain steps, one
// argument at a time and every branch as it stands: slow, and independent of the library.
#ifndef NX_TESTS_REAL_TRIGONOMETRY_REFERENCE_HPP
#define NX_TESTS_REAL_TRIGONOMETRY_REFERENCE_HPP

#include <algorithm>
#include <type_traits>
#include <vector>

#include <mpfr.h>

#include "real/format_reference.hpp"

namespace nx::test::reference {

/// The leading bits of 2/pi in chunks of so many bits, most significant first.
inline std::vector<std::int32_t> TwoOverPiChunks(int chunkBits, int chunks) {
    mpfr_t value, chunk;
    mpfr_init2(value, chunkBits * chunks + 64);
    mpfr_init2(chunk, 32);
    mpfr_const_pi(value, MPFR_RNDN);
    mpfr_ui_div(value, 2, value, MPFR_RNDN);
    std::vector<std::int32_t> result;
    for (int k = 0; k < chunks; ++k) {
        mpfr_mul_2si(value, value, chunkBits, MPFR_RNDN);
        mpfr_floor(chunk, value);
        result.push_back(static_cast<std::int32_t>(mpfr_get_si(chunk, MPFR_RNDN)));
        mpfr_sub(value, value, chunk, MPFR_RNDN);
    }
    mpfr_clears(value, chunk, nullptr);
    return result;
}

template <class T>
T Rounded(mpfr_srcptr value, mpfr_rnd_t rounding) {
    if constexpr (std::is_same_v<T, float>) {
        return mpfr_get_flt(value, rounding);
    } else {
        return mpfr_get_d(value, rounding);
    }
}

/// The value nearest to n * pi/2.
template <class T>
T NearestMultiple(int n) {
    mpfr_t value;
    mpfr_init2(value, 256);
    mpfr_const_pi(value, MPFR_RNDN);
    mpfr_mul_si(value, value, n, MPFR_RNDN);
    mpfr_div_2ui(value, value, 1, MPFR_RNDN);
    const T nearest = Rounded<T>(value, MPFR_RNDN);
    mpfr_clear(value);
    return nearest;
}

template <class T>
struct Reduction {
    static constexpr T invpio2 = Of<T>(0.6366197723675814, FromBits<float>(0x3F22F984));
    static constexpr T pio2_1 = Pattern<T>(0x3FF921FB54400000, 0x3FC90F80);
    static constexpr T pio2_1t = Pattern<T>(0x3DD0B4611A626331, 0x37354443);
    static constexpr T pio2_2 = Pattern<T>(0x3DD0B4611A600000, 0x37354400);
    static constexpr T pio2_2t = Pattern<T>(0x3BA3198A2E037073, 0x2E85A308);
    static constexpr T pio2_3 = Pattern<T>(0x3BA3198A2E000000, 0x2E85A300);
    static constexpr T pio2_3t = Pattern<T>(0x397B839A252049C1, 0x248D3132);
    static constexpr std::int32_t lastOne = Of<T>(0x4002D97B, 0x4016CBE2),
                                  lastMedium = Of<T>(0x413921FB, 0x43490F80);
    static constexpr int firstBound = Of<T>(16, 8), secondBound = Of<T>(49, 25);

    static constexpr int B = Of<T>(24, 8), jk = Of<T>(4, 9), jp = jk, tableSize = Of<T>(66, 198);
    static constexpr T twoB = Of<T>(16777216.0, 256.0f);
    static constexpr T twonB = Of<T>(5.960464477539063e-08, 0.00390625f);
    static constexpr std::int32_t mask1 = (1 << (B - 1)) - 1, mask2 = (1 << (B - 2)) - 1;
    static constexpr std::array PIo2 =
        Of<T>(Patterns<double>(0x3FF921FB40000000, 0x3E74442D00000000, 0x3CF8469880000000,
                               0x3B78CC5160000000, 0x39F01B8380000000),
              Patterns<float>(0x3FC90000, 0x39F00000, 0x37DA0000, 0x33A20000, 0x2E840000,
                              0x2B500000, 0x27C20000, 0x22D00000, 0x1FC40000, 0x1BC60000));

    static bool IsNextToPio2(std::int32_t ix) {
        return sizeof(T) == 8 ? ix == 0x3FF921FB
                              : (ix & ~0x1F) == 0x3FC90FC0 || (ix & ~0xF) == 0x3FC90FE0;
    }
    static bool MayBeMultiple(std::int32_t ix, int n) {
        constexpr std::int32_t mask = Of<T>(-1, ~0xFF);
        static const std::vector<std::int32_t> words = [] {
            std::vector<std::int32_t> table;
            for (int multiple = 1; multiple < 32; ++multiple) {
                table.push_back(Upper(NearestMultiple<T>(multiple)) & mask);
            }
            return table;
        }();
        return (ix & mask) == words[static_cast<std::size_t>(n - 1)];
    }
};

template <class T>
int BiasedExponent(T x) {
    return (Upper(x) & 0x7FFFFFFF) >> Format<T>::upperMantissaBits;
}

template <class T>
int ReduceLarge(const T* tx, T* y, int e0, int nx) {
    using R = Reduction<T>;
    static const std::vector<std::int32_t> table = TwoOverPiChunks(R::B, R::tableSize);
    T f[20], q[20], fq[20] = {};
    std::int32_t iq[20];

    const int jx = nx - 1;
    const int jv = std::max((e0 - 3) / R::B, 0);
    int q0 = e0 - R::B * (jv + 1);
    for (int i = 0; i <= jx + R::jk; ++i) {
        const int k = jv - jx + i;
        f[i] = k < 0 ? T{0} : static_cast<T>(table[static_cast<std::size_t>(k)]);
    }
    const auto product = [&](int i) {
        T sum = 0;
        for (int j = 0; j <= jx; ++j) {
            sum = sum + tx[j] * f[jx + i - j];
        }
        return sum;
    };
    for (int i = 0; i <= R::jk; ++i) {
        q[i] = product(i);
    }

    int jz = R::jk, n = 0, ih = 0;
    T z;
    for (;;) {
        z = q[jz];
        for (int i = jz, j = 0; i >= 1; --i, ++j) {
            const T fw = static_cast<T>(static_cast<std::int32_t>(R::twonB * z));
            iq[j] = static_cast<std::int32_t>(z - R::twoB * fw);
            z = q[i - 1] + fw;
        }
        z = std::scalbn(z, q0);
        z = z - T{8.0} * std::floor(z * T{0.125});
        n = static_cast<std::int32_t>(z);
        z = z - static_cast<T>(n);

        ih = 0;
        if (q0 > 0) {
            const std::int32_t i = iq[jz - 1] >> (R::B - q0);
            n = n + i;
            iq[jz - 1] = iq[jz - 1] - (i << (R::B - q0));
            ih = iq[jz - 1] >> (R::B - 1 - q0);
        } else if (q0 == 0) {
            ih = iq[jz - 1] >> (R::B - 1);
        } else if (z >= T{0.5}) {
            ih = 2;
        }

        if (ih > 0) {
            n = n + 1;
            bool carry = false;
            for (int i = 0; i < jz; ++i) {
                if (carry) {
                    iq[i] = static_cast<std::int32_t>(R::twoB) - 1 - iq[i];
                } else if (iq[i] != 0) {
                    carry = true;
                    iq[i] = static_cast<std::int32_t>(R::twoB) - iq[i];
                }
            }
            if (q0 == 1) {
                iq[jz - 1] = iq[jz - 1] & R::mask1;
            } else if (q0 == 2) {
                iq[jz - 1] = iq[jz - 1] & R::mask2;
            }
            if (ih == 2) {
                z = T{1.0} - z;
                if (carry) {
                    z = z - std::scalbn(T{1.0}, q0);
                }
            }
        }

        if (z != 0 || std::any_of(iq + R::jk, iq + jz, [](std::int32_t c) { return c != 0; })) {
            break;
        }
        int k = 1;
        while (iq[R::jk - k] == 0) {
            ++k;
        }
        for (int i = jz + 1; i <= jz + k; ++i) {
            f[jx + i] = static_cast<T>(table[static_cast<std::size_t>(jv + i)]);
            q[i] = product(i);
        }
        jz = jz + k;
    }

    if (z == 0) {
        jz = jz - 1;
        q0 = q0 - R::B;
        while (jz >= 0 && iq[jz] == 0) {
            jz = jz - 1;
            q0 = q0 - R::B;
        }
    } else {
        z = std::scalbn(z, -q0);
        if (z >= R::twoB) {
            const T fw = static_cast<T>(static_cast<std::int32_t>(R::twonB * z));
            iq[jz] = static_cast<std::int32_t>(z - R::twoB * fw);
            jz = jz + 1;
            q0 = q0 + R::B;
            iq[jz] = static_cast<std::int32_t>(fw);
        } else {
            iq[jz] = static_cast<std::int32_t>(z);
        }
    }
    if (jz < 0) {
        y[0] = y[1] = ih == 0 ? T{0} : T{-0.0};
        return n & 7;
    }

    T fw = std::scalbn(T{1.0}, q0);
    for (int i = jz; i >= 0; --i) {
        q[i] = static_cast<T>(iq[i]) * fw;
        fw = fw * R::twonB;
    }
    for (int i = jz; i >= 0; --i) {
        T sum = 0;
        for (int k = 0; k <= std::min(R::jp, jz - i); ++k) {
            sum = sum + R::PIo2[static_cast<std::size_t>(k)] * q[i + k];
        }
        fq[jz - i] = sum;
    }
    fw = 0;
    for (int i = jz; i >= 0; --i) {
        fw = fw + fq[i];
    }
    y[0] = ih == 0 ? fw : -fw;
    fw = fq[0] - fw;
    for (int i = 1; i <= jz; ++i) {
        fw = fw + fq[i];
    }
    y[1] = ih == 0 ? fw : -fw;
    return n & 7;
}

template <class T>
int ReducePio2(T x, T* y) {
    using R = Reduction<T>;
    constexpr int bits = Format<T>::upperMantissaBits;
    const std::int32_t hx = Upper(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix <= R::lastOne) {
        // For a negative x all constants are added.
        const T sign = hx > 0 ? T{1} : T{-1};
        T z = x - sign * R::pio2_1, t = sign * R::pio2_1t;
        if (R::IsNextToPio2(ix)) {
            z = z - sign * R::pio2_2;
            t = sign * R::pio2_2t;
        }
        y[0] = z - t;
        y[1] = (z - y[0]) - t;
        return hx > 0 ? 1 : -1;
    }
    int n;
    if (ix <= R::lastMedium) {
        T t = std::fabs(x);
        n = static_cast<int>(t * R::invpio2 + T{0.5});
        const T fn = static_cast<T>(n);
        T r = t - fn * R::pio2_1;
        T w = fn * R::pio2_1t;
        y[0] = r - w;
        if (!(n < 32 && !R::MayBeMultiple(ix, n))) {
            const int e = ix >> bits;
            if (e - BiasedExponent(y[0]) > R::firstBound) {
                t = r;
                w = fn * R::pio2_2;
                r = t - w;
                w = fn * R::pio2_2t - ((t - r) - w);
                y[0] = r - w;
                if (e - BiasedExponent(y[0]) > R::secondBound) {
                    t = r;
                    w = fn * R::pio2_3;
                    r = t - w;
                    w = fn * R::pio2_3t - ((t - r) - w);
                    y[0] = r - w;
                }
            }
        }
        y[1] = (r - y[0]) - w;
    } else if (ix > Format<T>::largestFinite) {
        y[0] = y[1] = Format<T>::nan;
        return 0;
    } else {
        const int e0 = (ix >> bits) - Of<T>(1046, 134);
        T tx[3], z = AddExponent(std::fabs(x), -e0);
        tx[0] = static_cast<T>(static_cast<int>(z));
        z = (z - tx[0]) * R::twoB;
        tx[1] = static_cast<T>(static_cast<int>(z));
        tx[2] = (z - tx[1]) * R::twoB;
        n = ReduceLarge(tx, y, e0, tx[2] != 0 ? 3 : tx[1] != 0 ? 2 : 1);
    }
    if (hx < 0) {
        y[0] = -y[0];
        y[1] = -y[1];
        return -n;
    }
    return n;
}

template <class T>
struct Trigonometric {
    static constexpr std::array S =
        Of<T>(std::array{-0.16666666666666632, 0.00833333333332249, -0.0001984126982985795,
                         2.7557313707070068e-06, -2.5050760253406863e-08, 1.58969099521155e-10},
              std::array{-0.1666666716337204f, 0.008333331905305386f, -0.0001984006230486557f,
                         2.724686055444181e-06f});
    static constexpr std::array C =
        Of<T>(std::array{0.0416666666666666, -0.001388888888887411, 2.480158728947673e-05,
                         -2.7557314351390663e-07, 2.087572321298175e-09, -1.1359647557788195e-11},
              std::array{0.0416666679084301f, -0.00138888880610466f, 2.4800576284178533e-05f,
                         -2.729795198774809e-07f});
    static constexpr std::array U =
        Of<T>(std::array{0.3333333333333341, 0.13333333333320124, 0.05396825397622605,
                         0.021869488294859542, 0.0088632398235993, 0.0035920791075913124,
                         0.0014562094543252903, 0.0005880412408202641, 0.0002464631348184699,
                         7.817944429395571e-05, 7.140724913826082e-05, -1.8558637485527546e-05,
                         2.590730518636337e-05},
              std::array{0.3333333134651184f, 0.1333353966474533f, 0.05391779541969299f,
                         0.02231680601835251f, 0.00710750836879015f, 0.0065900953486561775f});
    static constexpr T tiny = T{7.450580596923828e-09};
};

template <class T>
T KernelSin(T x, T y) {
    using C = Trigonometric<T>;
    if (std::fabs(x) < C::tiny) {
        return x;
    }
    const T z = x * x;
    const T v = z * x;
    const T r = Horner(C::S, z, 1);
    return x - (((T{0.5} * y - v * r) * z - y) + v * -C::S[0]);
}

template <class T>
T FastSin(T x) {
    const T z = x * x;
    return x + (z * x) * Horner(Trigonometric<T>::S, z);
}

template <class T>
T KernelCos(T x, T y) {
    using C = Trigonometric<T>;
    const T t = std::fabs(x), one = 1;
    if (t < C::tiny) {
        return one;
    }
    const T z = x * x;
    const T r = (Horner(C::C, z) * z) * z - x * y;
    const T hz = z * T{0.5};
    if (t < Pattern<T>(0x3FD3333300000000, 0x3E99999A)) {
        return one - (hz - r);
    }
    if (t > T{0.78125}) {
        return T{0.71875} - ((hz - T{0.28125}) - r);
    }
    const T qx = High(t) * T{0.25};
    return (one - qx) - ((hz - qx) - r);
}

template <class T>
T KernelTan(int iy, T x, T y) {
    constexpr std::array U = Trigonometric<T>::U;
    constexpr T one = 1;
    const std::int32_t hx = Upper(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix <= Of<T>(0x3E2FFFFF, 0x31800015)) {
        if (x == 0 && iy == -1) {
            return one / std::fabs(x);
        }
        if (iy == 1) {
            return x;
        }
        if (sizeof(T) == 4) {
            return -one / x;
        }
        const T w = x + y;
        const T a = -one / w;
        const T wh = High(w);
        const T ah = High(a);
        return ((y - (wh - x)) * ah + (wh * ah + one)) * a + ah;
    }
    const bool big = ix > Of<T>(0x3FE59427, 0x3F2CA579);
    if (big) {
        if (hx < 0) {
            x = -x;
            y = -y;
        }
        x = (Of<T>(3.061616997868383e-17, -2.1855694143368964e-08f) - y) +
            (Of<T>(0.7853981633974483, 0.7853981852531433f) - x);
        y = 0;
    }
    const T z = x * x;
    const T s = z * x;
    const T w = z * z;
    const T y2 = y + z * ((Horner(U, w, 2, 2) * z + Horner(U, w, 1, 2)) * s + y);
    const T r = s * U[0] + y2;
    const T v = x + r;
    if (big) {
        const T f = static_cast<T>(iy);
        const T bracket = x - (v * v / (v + f) - r);
        return static_cast<T>(1 - ((hx >> 30) & 2)) * (f - (bracket + bracket));
    }
    if (iy == 1) {
        return v;
    }
    const T a = -one / v;
    const T vh = High(v);
    const T ah = High(a);
    return ah + ((r - (vh - x)) * ah + (vh * ah + one)) * a;
}

inline bool IsFast(double x) {
    return std::fabs(x) < 0.7853984832763672;
}
inline bool IsFast(float x) {
    return std::fabs(x) <= 0.7853981852531433f;
}

/// The sine of y + n * pi/2.
template <class T>
T SineOfQuadrant(int n, const T* y) {
    switch (n & 3) {
    case 0:
        return KernelSin(y[0], y[1]);
    case 1:
        return KernelCos(y[0], y[1]);
    case 2:
        return -KernelSin(y[0], y[1]);
    default:
        return -KernelCos(y[0], y[1]);
    }
}

template <class T>
T Sine(T x) {
    if (IsFast(x)) {
        return std::fabs(x) < Trigonometric<T>::tiny ? x : FastSin(x);
    }
    T y[2];
    const int n = ReducePio2(x, y);
    return SineOfQuadrant(n, y);
}

template <class T>
T Cosine(T x) {
    if (IsFast(x)) {
        return KernelCos(x, T{0});
    }
    T y[2];
    const int n = ReducePio2(x, y);
    return SineOfQuadrant(n + 1, y);
}

template <class T>
T Tangent(T x) {
    if (IsFast(x)) {
        return KernelTan(1, x, T{0});
    }
    T y[2];
    const int n = ReducePio2(x, y);
    return KernelTan(1 - 2 * (n & 1), y[0], y[1]);
}

} // namespace nx::test::reference

#endif
