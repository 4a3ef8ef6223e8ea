// The reduction of trigonometric arguments, and sine, cosine and tangent, as plain steps, one
// argument at a time and every branch as it stands: slow, and independent of the library.
#ifndef NX_TESTS_REAL_TRIGONOMETRY_REFERENCE_HPP
#define NX_TESTS_REAL_TRIGONOMETRY_REFERENCE_HPP

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>
#include <vector>

#include <mpfr.h>

#include "support/bits.hpp"

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
struct Reduction;

template <>
struct Reduction<double> {
    static constexpr double invpio2 = 0.6366197723675814;
    static constexpr double pio2_1 = FromBits<double>(0x3FF921FB54400000);
    static constexpr double pio2_1t = FromBits<double>(0x3DD0B4611A626331);
    static constexpr double pio2_2 = FromBits<double>(0x3DD0B4611A600000);
    static constexpr double pio2_2t = FromBits<double>(0x3BA3198A2E037073);
    static constexpr double pio2_3 = FromBits<double>(0x3BA3198A2E000000);
    static constexpr double pio2_3t = FromBits<double>(0x397B839A252049C1);
    static constexpr std::int32_t lastOne = 0x4002D97B;
    static constexpr std::int32_t lastMedium = 0x413921FB;
    static constexpr std::int32_t infinityWord = 0x7FF00000;
    static constexpr int exponentShift = 20;
    static constexpr int firstBound = 16;
    static constexpr int secondBound = 49;
    static constexpr std::uint64_t nan = 0xFFF8000000000000;

    static bool IsNextToPio2(std::int32_t ix) {
        return ix == 0x3FF921FB;
    }
    static bool MayBeMultiple(std::int32_t ix, int n) {
        static const std::vector<std::int32_t> words = [] {
            std::vector<std::int32_t> table;
            for (int multiple = 1; multiple < 32; ++multiple) {
                table.push_back(
                    static_cast<std::int32_t>(BitsOf(NearestMultiple<double>(multiple)) >> 32));
            }
            return table;
        }();
        return ix == words[static_cast<std::size_t>(n - 1)];
    }

    static constexpr int B = 24;
    static constexpr int jk = 4;
    static constexpr int jp = 4;
    static constexpr double twoB = 16777216.0;
    static constexpr double twonB = 5.960464477539063e-08;
    static constexpr std::int32_t mask1 = 0x7FFFFF;
    static constexpr std::int32_t mask2 = 0x3FFFFF;
    static constexpr double floorBound = 4503599627370496.0;
    static constexpr int tableSize = 66;
    static constexpr std::array<double, 5> PIo2 = {
        FromBits<double>(0x3FF921FB40000000), FromBits<double>(0x3E74442D00000000),
        FromBits<double>(0x3CF8469880000000), FromBits<double>(0x3B78CC5160000000),
        FromBits<double>(0x39F01B8380000000)};

    static double Scale(double x, int k) {
        return std::scalbn(x, k);
    }
};

inline float ScalbnSingle(float x, int k) {
    int e = static_cast<int>(BitsOf(x) >> 23 & 0xFF);
    if (e == 0) {
        if ((BitsOf(x) & 0x7FFFFFFF) == 0) {
            return x;
        }
        x = x * 33554432.0f;
        if (k < -50000) {
            return 0.0f * x;
        }
        e = static_cast<int>(BitsOf(x) >> 23 & 0xFF) - 25;
    }
    if (e == 255) {
        return x;
    }
    if (k > 254 - e) {
        return FromBits<float>((BitsOf(x) & 0x80000000) | 0x7F800000);
    }
    if (k <= -25 - e) {
        return 0.0f * x;
    }
    const int m = e + k;
    const auto withExponent = [&](int exponent) {
        return FromBits<float>((BitsOf(x) & 0x807FFFFF) | static_cast<std::uint32_t>(exponent)
                                                              << 23);
    };
    if (m > 0) {
        return withExponent(m);
    }
    return withExponent(m + 25) * 2.9802322387695312e-08f;
}

template <>
struct Reduction<float> {
    static constexpr float invpio2 = FromBits<float>(0x3F22F984);
    static constexpr float pio2_1 = FromBits<float>(0x3FC90F80);
    static constexpr float pio2_1t = FromBits<float>(0x37354443);
    static constexpr float pio2_2 = FromBits<float>(0x37354400);
    static constexpr float pio2_2t = FromBits<float>(0x2E85A308);
    static constexpr float pio2_3 = FromBits<float>(0x2E85A300);
    static constexpr float pio2_3t = FromBits<float>(0x248D3132);
    static constexpr std::int32_t lastOne = 0x4016CBE2;
    static constexpr std::int32_t lastMedium = 0x43490F80;
    static constexpr std::int32_t infinityWord = 0x7F800000;
    static constexpr int exponentShift = 23;
    static constexpr int firstBound = 8;
    static constexpr int secondBound = 25;
    static constexpr std::uint32_t nan = 0xFFC00000;

    static bool IsNextToPio2(std::int32_t ix) {
        return (ix & ~0x1F) == 0x3FC90FC0 || (ix & ~0xF) == 0x3FC90FE0;
    }
    static bool MayBeMultiple(std::int32_t ix, int n) {
        static const std::vector<std::int32_t> words = [] {
            std::vector<std::int32_t> table;
            for (int multiple = 1; multiple < 32; ++multiple) {
                table.push_back(
                    static_cast<std::int32_t>(BitsOf(NearestMultiple<float>(multiple)) & ~0xFFu));
            }
            return table;
        }();
        return (ix & 0x7FFFFF00) == words[static_cast<std::size_t>(n - 1)];
    }

    static constexpr int B = 8;
    static constexpr int jk = 9;
    static constexpr int jp = 9;
    static constexpr float twoB = 256.0f;
    static constexpr float twonB = 0.00390625f;
    static constexpr std::int32_t mask1 = 0x7F;
    static constexpr std::int32_t mask2 = 0x3F;
    static constexpr float floorBound = 8388608.0f;
    static constexpr int tableSize = 198;
    static constexpr std::array<float, 10> PIo2 = {
        FromBits<float>(0x3FC90000), FromBits<float>(0x39F00000), FromBits<float>(0x37DA0000),
        FromBits<float>(0x33A20000), FromBits<float>(0x2E840000), FromBits<float>(0x2B500000),
        FromBits<float>(0x27C20000), FromBits<float>(0x22D00000), FromBits<float>(0x1FC40000),
        FromBits<float>(0x1BC60000)};

    static float Scale(float x, int k) {
        return ScalbnSingle(x, k);
    }
};

template <class T>
std::int32_t UpperWordOf(T x) {
    return static_cast<std::int32_t>(BitsOf(x) >> (8 * sizeof(T) - 32));
}

template <class T>
int BiasedExponent(T x) {
    return (UpperWordOf(x) & 0x7FFFFFFF) >> Reduction<T>::exponentShift;
}

template <class T>
T Floor(T v) {
    if (std::fabs(v) < Reduction<T>::floorBound) {
        T t = static_cast<T>(static_cast<std::int64_t>(v));
        if (t > v) {
            t = t - 1;
        }
        return std::copysign(t, v);
    }
    return v;
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
        z = R::Scale(z, q0);
        z = z - T{8.0} * Floor(z * T{0.125});
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
                    z = z - R::Scale(T{1.0}, q0);
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
        z = R::Scale(z, -q0);
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

    T fw = R::Scale(T{1.0}, q0);
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

/// Splits |x| for `ReduceLarge`; returns the number of chunks.
inline int SplitLarge(double x, double* tx, int& e0) {
    const std::int32_t ix = UpperWordOf(x) & 0x7FFFFFFF;
    e0 = (ix >> 20) - 1046;
    const std::uint32_t upper =
        static_cast<std::uint32_t>(ix) - (static_cast<std::uint32_t>(e0) << 20);
    double z = FromBits<double>(std::uint64_t{upper} << 32 | (BitsOf(x) & 0xFFFFFFFF));
    tx[0] = static_cast<double>(static_cast<int>(z));
    z = (z - tx[0]) * 16777216.0;
    tx[1] = static_cast<double>(static_cast<int>(z));
    z = (z - tx[1]) * 16777216.0;
    tx[2] = z;
    return tx[2] != 0 ? 3 : tx[1] != 0 ? 2 : 1;
}
inline int SplitLarge(float x, float* tx, int& e0) {
    const std::int32_t ix = UpperWordOf(x) & 0x7FFFFFFF;
    e0 = (ix >> 23) - 134;
    float z =
        FromBits<float>(static_cast<std::uint32_t>(ix) - (static_cast<std::uint32_t>(e0) << 23));
    tx[0] = static_cast<float>(static_cast<int>(z));
    z = (z - tx[0]) * 256.0f;
    tx[1] = static_cast<float>(static_cast<int>(z));
    tx[2] = (z - tx[1]) * 256.0f;
    return tx[2] != 0 ? 3 : tx[1] != 0 ? 2 : 1;
}

template <class T>
int ReducePio2(T x, T* y) {
    using R = Reduction<T>;
    const std::int32_t hx = UpperWordOf(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix <= R::lastOne) {
        if (hx > 0) {
            T z = x - R::pio2_1;
            if (!R::IsNextToPio2(ix)) {
                y[0] = z - R::pio2_1t;
                y[1] = (z - y[0]) - R::pio2_1t;
            } else {
                z = z - R::pio2_2;
                y[0] = z - R::pio2_2t;
                y[1] = (z - y[0]) - R::pio2_2t;
            }
            return 1;
        }
        T z = x + R::pio2_1;
        if (!R::IsNextToPio2(ix)) {
            y[0] = z + R::pio2_1t;
            y[1] = (z - y[0]) + R::pio2_1t;
        } else {
            z = z + R::pio2_2;
            y[0] = z + R::pio2_2t;
            y[1] = (z - y[0]) + R::pio2_2t;
        }
        return -1;
    }
    if (ix <= R::lastMedium) {
        T t = std::fabs(x);
        const int n = static_cast<int>(t * R::invpio2 + T{0.5});
        const T fn = static_cast<T>(n);
        T r = t - fn * R::pio2_1;
        T w = fn * R::pio2_1t;
        y[0] = r - w;
        if (!(n < 32 && !R::MayBeMultiple(ix, n))) {
            const int e = ix >> R::exponentShift;
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
        if (hx < 0) {
            y[0] = -y[0];
            y[1] = -y[1];
            return -n;
        }
        return n;
    }
    if (ix >= R::infinityWord) {
        y[0] = y[1] = FromBits<T>(R::nan);
        return 0;
    }
    T tx[3];
    int e0;
    const int nx = SplitLarge(x, tx, e0);
    const int n = ReduceLarge(tx, y, e0, nx);
    if (hx < 0) {
        y[0] = -y[0];
        y[1] = -y[1];
        return -n;
    }
    return n;
}

inline constexpr double S1 = -0.16666666666666632, S2 = 0.00833333333332249,
                        S3 = -0.0001984126982985795, S4 = 2.7557313707070068e-06,
                        S5 = -2.5050760253406863e-08, S6 = 1.58969099521155e-10;
inline constexpr double C1 = 0.0416666666666666, C2 = -0.001388888888887411,
                        C3 = 2.480158728947673e-05, C4 = -2.7557314351390663e-07,
                        C5 = 2.087572321298175e-09, C6 = -1.1359647557788195e-11;
inline constexpr float S1f = -0.1666666716337204f, S2f = 0.008333331905305386f,
                       S3f = -0.0001984006230486557f, S4f = 2.724686055444181e-06f;
inline constexpr float C1f = 0.0416666679084301f, C2f = -0.00138888880610466f,
                       C3f = 2.4800576284178533e-05f, C4f = -2.729795198774809e-07f;

inline double KernelSin(double x, double y) {
    if (std::fabs(x) < 7.450580596923828e-09) {
        return x;
    }
    const double z = x * x;
    const double v = z * x;
    const double r = (((S6 * z + S5) * z + S4) * z + S3) * z + S2;
    return x - (((0.5 * y - v * r) * z - y) + v * 0.16666666666666632);
}
inline float KernelSin(float x, float y) {
    if (std::fabs(x) < 7.450580596923828e-09f) {
        return x;
    }
    const float z = x * x;
    const float v = z * x;
    const float r = (S4f * z + S3f) * z + S2f;
    return x - (((0.5f * y - v * r) * z - y) + v * 0.1666666716337204f);
}

inline double FastSin(double x) {
    const double z = x * x;
    return x + (z * x) * (((((S6 * z + S5) * z + S4) * z + S3) * z + S2) * z + S1);
}
inline float FastSin(float x) {
    const float z = x * x;
    return x + (z * x) * (((S4f * z + S3f) * z + S2f) * z + S1f);
}

inline double KernelCos(double x, double y) {
    const double t = std::fabs(x);
    if (t < 7.450580596923828e-09) {
        return 1.0;
    }
    const double z = x * x;
    const double p = ((((C6 * z + C5) * z + C4) * z + C3) * z + C2) * z + C1;
    const double r = (p * z) * z - x * y;
    const double hz = z * 0.5;
    if (t < FromBits<double>(0x3FD3333300000000)) {
        return 1.0 - (hz - r);
    }
    if (t > 0.78125) {
        return 0.71875 - ((hz - 0.28125) - r);
    }
    const double qx = FromBits<double>(BitsOf(t) & 0xFFFFFFFF00000000) * 0.25;
    return (1.0 - qx) - ((hz - qx) - r);
}
inline float KernelCos(float x, float y) {
    const float t = std::fabs(x);
    if (t < 7.450580596923828e-09f) {
        return 1.0f;
    }
    const float z = x * x;
    const float p = ((C4f * z + C3f) * z + C2f) * z + C1f;
    const float r = (p * z) * z - x * y;
    const float hz = z * 0.5f;
    if (t < FromBits<float>(0x3E99999A)) {
        return 1.0f - (hz - r);
    }
    if (t > 0.78125f) {
        return 0.71875f - ((hz - 0.28125f) - r);
    }
    const float qx = FromBits<float>(BitsOf(t) & 0xFFFFF000) * 0.25f;
    return (1.0f - qx) - ((hz - qx) - r);
}

inline double KernelTan(int iy, double x, double y) {
    constexpr double T[] = {0.3333333333333341,    0.13333333333320124,   0.05396825397622605,
                            0.021869488294859542,  0.0088632398235993,    0.0035920791075913124,
                            0.0014562094543252903, 0.0005880412408202641, 0.0002464631348184699,
                            7.817944429395571e-05, 7.140724913826082e-05, -1.8558637485527546e-05,
                            2.590730518636337e-05};
    const auto high = [](double v) { return FromBits<double>(BitsOf(v) & 0xFFFFFFFF00000000); };
    const std::int32_t hx = UpperWordOf(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix <= 0x3E2FFFFF) {
        if (x == 0 && iy == -1) {
            return 1.0 / std::fabs(x);
        }
        if (iy == 1) {
            return x;
        }
        const double w = x + y;
        const double a = -1.0 / w;
        const double wh = high(w);
        const double ah = high(a);
        return ((y - (wh - x)) * ah + (wh * ah + 1.0)) * a + ah;
    }
    const bool big = ix > 0x3FE59427;
    if (big) {
        if (hx < 0) {
            x = -x;
            y = -y;
        }
        x = (3.061616997868383e-17 - y) + (0.7853981633974483 - x);
        y = 0;
    }
    const double z = x * x;
    const double s = z * x;
    const double w = z * z;
    const double e = ((((T[12] * w + T[10]) * w + T[8]) * w + T[6]) * w + T[4]) * w + T[2];
    const double o = ((((T[11] * w + T[9]) * w + T[7]) * w + T[5]) * w + T[3]) * w + T[1];
    const double y2 = y + z * ((e * z + o) * s + y);
    const double r = s * T[0] + y2;
    const double v = x + r;
    if (big) {
        const double f = iy;
        const double bracket = x - (v * v / (v + f) - r);
        return static_cast<double>(1 - ((hx >> 30) & 2)) * (f - (bracket + bracket));
    }
    if (iy == 1) {
        return v;
    }
    const double a = -1.0 / v;
    const double vh = high(v);
    const double ah = high(a);
    return ah + ((r - (vh - x)) * ah + (vh * ah + 1.0)) * a;
}
inline float KernelTan(int iy, float x, float y) {
    constexpr float U0 = 0.3333333134651184f, U1 = 0.1333353966474533f, U2 = 0.05391779541969299f,
                    U3 = 0.02231680601835251f, U4 = 0.00710750836879015f,
                    U5 = 0.0065900953486561775f;
    const auto high = [](float v) { return FromBits<float>(BitsOf(v) & 0xFFFFF000); };
    const std::int32_t hx = UpperWordOf(x);
    const std::int32_t ix = hx & 0x7FFFFFFF;
    if (ix <= 0x31800015) {
        if (x == 0 && iy == -1) {
            return 1.0f / std::fabs(x);
        }
        if (iy == 1) {
            return x;
        }
        return -1.0f / x;
    }
    const bool big = ix > 0x3F2CA579;
    if (big) {
        if (hx < 0) {
            x = -x;
            y = -y;
        }
        x = (-2.1855694143368964e-08f - y) + (0.7853981852531433f - x);
        y = 0;
    }
    const float z = x * x;
    const float s = z * x;
    const float w = z * z;
    const float p = (U5 * w + U3) * w + U1 + (U4 * w + U2) * z;
    const float y2 = y + z * (p * s + y);
    const float r = s * U0 + y2;
    const float v = x + r;
    if (big) {
        const float f = static_cast<float>(iy);
        const float bracket = x - (v * v / (v + f) - r);
        return static_cast<float>(1 - ((hx >> 30) & 2)) * (f - (bracket + bracket));
    }
    if (iy == 1) {
        return v;
    }
    const float a = -1.0f / v;
    const float vh = high(v);
    const float ah = high(a);
    return ah + ((r - (vh - x)) * ah + (vh * ah + 1.0f)) * a;
}

inline bool IsFast(double x) {
    return std::fabs(x) < 0.7853984832763672;
}
inline bool IsFast(float x) {
    return std::fabs(x) <= 0.7853981852531433f;
}

template <class T>
T Sine(T x) {
    if (IsFast(x)) {
        return std::fabs(x) < T{7.450580596923828e-09} ? x : FastSin(x);
    }
    T y[2];
    switch (ReducePio2(x, y) & 3) {
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
T Cosine(T x) {
    if (IsFast(x)) {
        return KernelCos(x, T{0});
    }
    T y[2];
    switch (ReducePio2(x, y) & 3) {
    case 0:
        return KernelCos(y[0], y[1]);
    case 1:
        return -KernelSin(y[0], y[1]);
    case 2:
        return -KernelCos(y[0], y[1]);
    default:
        return KernelSin(y[0], y[1]);
    }
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

template <class T>
void SinCos(T x, T* sine, T* cosine) {
    constexpr T tiny = T{7.450580596923828e-09};
    if (IsFast(x)) {
        *sine = std::fabs(x) < tiny ? x : FastSin(x);
        *cosine = std::fabs(x) < tiny ? T{1} : KernelCos(x, T{0});
        return;
    }
    T y[2];
    const int n = ReducePio2(x, y);
    const T s = std::fabs(y[0]) < tiny ? y[0] : KernelSin(y[0], y[1]);
    const T c = std::fabs(y[0]) < tiny ? T{1} : KernelCos(y[0], y[1]);
    switch (n & 3) {
    case 0:
        *sine = s;
        *cosine = c;
        break;
    case 1:
        *sine = c;
        *cosine = -s;
        break;
    case 2:
        *sine = -s;
        *cosine = -c;
        break;
    default:
        *sine = -c;
        *cosine = s;
    }
}

} // namespace nx::test::reference

#endif
