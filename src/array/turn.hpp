// Sine, cosine and tangent of angles in degrees and in multiples of pi, exact where the mathematics
// is.
//
// 1. x is reduced by whole turns to r in [-turn/2, turn/2], exactly.
// 2. Where r in steps of 1/24 turn rounds to an integer, the result is read from a table.
// 3. Otherwise quarters of a turn bring r into [-turn/8, turn/8], exactly, and a product with the
//    unit in radians, of two parts, gives a head and a tail for the kernels of sine, cosine and
//    tangent.
// Lanes work on |x|: sine and tangent are odd and the cosine is even, bit by bit.
#ifndef NX_ARRAY_TURN_HPP
#define NX_ARRAY_TURN_HPP

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "core/lanes.hpp"
#include "real/degrees.hpp"
#include "real/sine.hpp"
#include "real/tangent.hpp"

namespace nx::array {

using namespace core;

// Units of an angle: how many make a turn, a head and a tail of one in radians, and an angle in
// steps of 1/24 turn.

struct Degrees {
    template <class T>
    static constexpr T turn = 360;
    template <class T>
    static constexpr T head = real::DegreeConstants<T>::c0;
    template <class T>
    static constexpr T tail = real::DegreeConstants<T>::c1;

    template <Value V>
    static V Steps(V r) {
        return r / ElementOf<V>{15};
    }

    /// One unit in steps, but for the rounding.
    template <class T>
    static constexpr T stepsInUnit = 1 / T{15};
    /// How far r is beyond the n steps that are next to it, in degrees: exact.
    template <Value V>
    static V Beyond(V r, V n) {
        return r - n * ElementOf<V>{15};
    }
    /// The rounding of an angle in steps is at most so many places of the angle in what `Beyond` gives.
    static constexpr int places = 1;

    template <Value V>
    static V Radians(V y) {
        return real::RadiansFromDegrees(y);
    }
};

template <class T>
struct PiConstants;
template <>
struct PiConstants<double> {
    static constexpr double p0 = Pinned(3.141592653589793, 0x400921FB54442D18);
    static constexpr double p1 = Pinned(1.2246467991473532e-16, 0x3CA1A62633145C07);
};
template <>
struct PiConstants<float> {
    static constexpr float p0 = Pinned(3.1415927410125732f, 0x40490FDB);
    static constexpr float p1 = Pinned(-8.742277657347586e-08f, 0xB3BBBD2E);
};

struct PiMultiples {
    template <class T>
    static constexpr T turn = 2;
    template <class T>
    static constexpr T head = PiConstants<T>::p0;
    template <class T>
    static constexpr T tail = PiConstants<T>::p1;

    template <Value V>
    static V Steps(V r) {
        return ElementOf<V>{12} * r;
    }

    template <class T>
    static constexpr T stepsInUnit = 12;
    /// In steps. One value alone rounds 12 * x; `places` makes room for the difference.
    template <Value V>
    static V Beyond(V r, V n) {
        return Steps(r) - n;
    }
    static constexpr int places = 12;

    /// For what needs no tail.
    template <Value V>
    static V Radians(V y) {
        return y * head<ElementOf<V>>;
    }
};

// Exact values.

template <class T>
struct ExactValues;
template <>
struct ExactValues<double> {
    static constexpr double sin15 = Pinned(0.25881904510252074, 0x3FD0907DC1930690);
    static constexpr double sin45 = Pinned(0.7071067811865476, 0x3FE6A09E667F3BCD);
    static constexpr double sin60 = Pinned(0.8660254037844386, 0x3FEBB67AE8584CAA);
    static constexpr double sin75 = Pinned(0.9659258262890683, 0x3FEEE8DD4748BF15);
    static constexpr double tan15 = Pinned(0.2679491924311227, 0x3FD126145E9ECD56);
    static constexpr double tan30 = Pinned(0.5773502691896257, 0x3FE279A74590331C);
    static constexpr double tan60 = Pinned(1.7320508075688772, 0x3FFBB67AE8584CAA);
    static constexpr double tan75 = Pinned(3.732050807568877, 0x400DDB3D742C2655);
};
template <>
struct ExactValues<float> {
    static constexpr float sin15 = Pinned(0.258819043636322f, 0x3E8483EE);
    static constexpr float sin45 = Pinned(0.7071067690849304f, 0x3F3504F3);
    static constexpr float sin60 = Pinned(0.8660253882408142f, 0x3F5DB3D7);
    static constexpr float sin75 = Pinned(0.9659258127212524f, 0x3F7746EA);
    static constexpr float tan15 = Pinned(0.2679491937160492f, 0x3E8930A3);
    static constexpr float tan30 = Pinned(0.5773502588272095f, 0x3F13CD3A);
    static constexpr float tan60 = Pinned(1.7320507764816284f, 0x3FDDB3D7);
    static constexpr float tan75 = Pinned(3.732050895690918f, 0x406ED9EC);
};

/// The exact values of angles by quarters of a turn, and around each by steps from -4 to 3.
template <class T, class E = ExactValues<T>>
struct ExactTables {
    static constexpr T sine[32] = {
        -E::sin60, -E::sin45, -0.5f,     -E::sin15, 0,  E::sin15,  0.5f,      E::sin45,
        0.5f,      E::sin45,  E::sin60,  E::sin75,  1,  E::sin75,  E::sin60,  E::sin45,
        E::sin60,  E::sin45,  0.5f,      E::sin15,  0,  -E::sin15, -0.5f,     -E::sin45,
        -0.5f,     -E::sin45, -E::sin60, -E::sin75, -1, -E::sin75, -E::sin60, -E::sin45};
    static constexpr T tangent[32] = {-E::tan60,
                                      -1,
                                      -E::tan30,
                                      -E::tan15,
                                      0,
                                      E::tan15,
                                      E::tan30,
                                      1,
                                      E::tan30,
                                      1,
                                      E::tan60,
                                      E::tan75,
                                      infinity<T>,
                                      -E::tan75,
                                      -E::tan60,
                                      -1,
                                      -E::tan60,
                                      -1,
                                      -E::tan30,
                                      -E::tan15,
                                      -T{0},
                                      E::tan15,
                                      E::tan30,
                                      1,
                                      E::tan30,
                                      1,
                                      E::tan60,
                                      E::tan75,
                                      -infinity<T>,
                                      -E::tan75,
                                      -E::tan60,
                                      -1};
};

/// The index of 0 to 12 steps.
constexpr int ExactIndex(int steps) {
    return steps + 4 + 2 * ((steps + 3) / 6);
}

// One value.

/// A reduced angle: an exact one by its steps, or a quadrant with what is left in radians.
template <class T>
struct ReducedAngle {
    bool isExact;
    int steps;
    int quadrant;
    T head, tail;
};

template <class Unit, class T>
ReducedAngle<T> ReduceAngle(T x) {
    constexpr T turn = Unit::template turn<T>;
    T a = std::fabs(x);
    if (!(a < turn)) {
        x = std::fmod(x, turn);
        a = std::fabs(x);
    }
    if (a > turn / 2) {
        x = x > 0 ? x - turn : x + turn;
        a = std::fabs(x);
    }
    if (a != a) {
        return {false, 0, 0, defaultNaN<T>, defaultNaN<T>};
    }
    ReducedAngle<T> angle{};
    const T steps = Unit::Steps(x);
    angle.steps = static_cast<int>(steps);
    angle.isExact = static_cast<T>(angle.steps) == steps;
    if (!angle.isExact && a >= turn / 8) {
        angle.quadrant = a < turn * T{0.375} ? 1 : 2;
        const T quarters = angle.quadrant == 1 ? turn / 4 : turn / 2;
        if (x > 0) {
            x -= quarters;
        } else {
            x += quarters;
            angle.quadrant = -angle.quadrant;
        }
    }
    angle.head = x * Unit::template head<T>;
    angle.tail = x * Unit::template tail<T>;
    return angle;
}

template <class T>
T SineOfAngle(const ReducedAngle<T>& angle) {
    if (angle.isExact) {
        return FlipSignBy(ExactTables<T>::sine[ExactIndex(std::abs(angle.steps))], angle.head);
    }
    return real::SineOfQuadrant(angle.quadrant, angle.head, angle.tail);
}

template <class T>
T CosineOfAngle(const ReducedAngle<T>& angle) {
    if (angle.isExact) {
        return ExactTables<T>::sine[(ExactIndex(std::abs(angle.steps)) + 8) & 31];
    }
    return real::SineOfQuadrant(angle.quadrant + 1, angle.head, angle.tail);
}

template <class T>
T TangentOfAngle(const ReducedAngle<T>& angle) {
    if (angle.isExact) {
        return FlipSignBy(ExactTables<T>::tangent[ExactIndex(std::abs(angle.steps))], angle.head);
    }
    return real::KernelTan((angle.quadrant & 1) != 0 ? -1 : 1, angle.head, angle.tail);
}

// Lanes.

/// |x| less quarters of a turn: the rest in [-turn/8, turn/8], in the unit; how many quarters, in
/// the lowest bits of their sum with `toInteger`; the exact result, or a NaN.
template <Value V>
struct AngleLanes {
    V rest, quarters, exact;
};

/// Lanes serve angles below this.
template <class Unit, class T>
inline constexpr T angleBound =
    Unit::template turn<T> / 4 * T{sizeof(T) == sizeof(double) ? 0x1p30f : 0x1p12f};

/// Rare: large, infinite, NaN or so small that the steps underflow; what comes to lie just above
/// turn/8, since the estimate of the quarters is a little low; and what is so close to a whole step
/// that the rounding of x in steps decides.
template <class Unit, Value V>
[[gnu::always_inline]] inline AngleLanes<V> ReduceAngle(V x, const ElementOf<V>* table,
                                                        std::uint32_t offset, MaskOf<V>& rare) {
    using T = ElementOf<V>;
    constexpr T quarter = Unit::template turn<T> / 4;
    constexpr T toInteger = real::ReductionConstants<T>::toInteger;
    constexpr T epsilon = std::numeric_limits<T>::epsilon();
    constexpr T tiny = static_cast<T>(Doubles<V> ? 0x1p-900 : 0x1p-100);
    const V a = Abs(x);
    const V quarters = a * ((T{1} - 2 * epsilon) / quarter) + toInteger;
    const V rest = a - (quarters - toInteger) * quarter;
    const V steps = rest * Unit::template stepsInUnit<T> + (toInteger + T{4});
    const V off = Unit::Beyond(rest, steps - (toInteger + T{4}));
    const MaskOf<V> between = NotEqual(off, V{});
    rare |= NotLess(a, Broadcast<V>(angleBound<Unit, T>)) | Less(Broadcast<V>(quarter / 2), rest) |
            (between & Less(Abs(off), a * (Unit::places * epsilon) + tiny));
    const V entry = Gather(table, ((Bits(quarters) << 3) + Bits(steps) + offset) & 31);
    return {rest, quarters, FromBits<V>(Bits(entry) | (BitsOf<V>)between)};
}

/// An angle with the polynomials of sine and cosine.
template <Value V>
struct AngleEvaluated {
    AngleLanes<V> angle;
    V r, p;
};

template <class Unit>
struct AnglePhases {
    template <class V>
    static AngleEvaluated<V> Next(const AngleLanes<V>& angle) {
        const V head = angle.rest * Unit::template head<ElementOf<V>>;
        const V z = head * head;
        return {angle, real::SinePolynomial(z), real::CosinePolynomial(z)};
    }

    /// The sine of so many quarters more.
    template <class V>
    static V Finish(const AngleEvaluated<V>& s, BitsOf<V> quarters) {
        using T = ElementOf<V>;
        const V head = s.angle.rest * Unit::template head<T>;
        const V tail = s.angle.rest * Unit::template tail<T>;
        const V cosine = real::SumCosine(head, s.p, tail);
        const V sine = head + real::SineTerm(head, tail, s.r);
        // Next to 0, where the sine of one value is head, the sum is head too: what it adds is
        // below half a place.
        const V value = Select(real::IsOdd<V>(quarters), cosine, sine);
        return Select(IsNaN(s.angle.exact), real::FlipByQuadrant(value, quarters), s.angle.exact);
    }
};

template <class Unit>
struct SineKernel : AnglePhases<Unit> {
    using AnglePhases<Unit>::Next;

    template <class V>
    static AngleLanes<V> First(V x, MaskOf<V>& rare) {
        AngleLanes<V> angle = ReduceAngle<Unit>(x, ExactTables<ElementOf<V>>::sine, 0, rare);
        // Two quarters change the sign.
        constexpr int toQuarters = 8 * sizeof(ElementOf<V>) - 2;
        angle.quarters =
            FromBits<V>(Bits(angle.quarters) ^ ((Bits(x) & signBit<ElementOf<V>>) >> toQuarters));
        angle.exact = FlipSignBy(angle.exact, x);
        return angle;
    }

    template <class V>
    static V Next(const AngleEvaluated<V>& s) {
        return AnglePhases<Unit>::Finish(s, Bits(s.angle.quarters));
    }

    template <class T>
    static T Entry(T x) {
        return SineOfAngle(ReduceAngle<Unit>(x));
    }
};

template <class Unit>
struct CosineKernel : AnglePhases<Unit> {
    using AnglePhases<Unit>::Next;

    template <class V>
    static AngleLanes<V> First(V x, MaskOf<V>& rare) {
        return ReduceAngle<Unit>(x, ExactTables<ElementOf<V>>::sine, 8, rare);
    }

    template <class V>
    static V Next(const AngleEvaluated<V>& s) {
        return AnglePhases<Unit>::Finish(s, Bits(s.angle.quarters) + 1);
    }

    template <class T>
    static T Entry(T x) {
        return CosineOfAngle(ReduceAngle<Unit>(x));
    }
};

template <class Unit>
struct TangentKernel {
    /// What a phase of the tangent works on, and the exact result or a NaN.
    template <class State, class V>
    struct OrExact {
        State state;
        V exact;
    };

    template <class V>
    static OrExact<real::Reduced<V>, V> First(V x, MaskOf<V>& rare) {
        using T = ElementOf<V>;
        const AngleLanes<V> angle = ReduceAngle<Unit>(x, ExactTables<T>::tangent, 0, rare);
        const V head = angle.rest * Unit::template head<T>;
        const V tail = angle.rest * Unit::template tail<T>;
        // Next to a pole the tangent has a formula of its own.
        rare |= Less(Abs(head), Broadcast<V>(T{0x1p-26f})) & real::IsOdd<V>(Bits(angle.quarters)) &
                IsNaN(angle.exact);
        return {{FlipSignBy(head, x), FlipSignBy(tail, x), angle.quarters},
                FlipSignBy(angle.exact, x)};
    }

    /// Exact angles often come together.
    template <class T, class V = Vector<T>>
    static bool ResultsOfFirst(T* out, const OrExact<real::Reduced<V>, V>* states,
                               unsigned long vectors) {
        for (unsigned long j = 0; j < vectors; ++j) {
            if (Any<V>(IsNaN(states[j].exact))) {
                return false;
            }
            Store(out + j * Lanes<V>::count, states[j].exact);
        }
        return true;
    }

    template <class State, class V>
    static auto Next(const OrExact<State, V>& s) {
        const auto next = real::TanKernel::Next(s.state);
        if constexpr (Value<std::remove_const_t<decltype(next)>>) {
            return Select(IsNaN(s.exact), next, s.exact);
        } else {
            return OrExact<std::remove_const_t<decltype(next)>, V>{next, s.exact};
        }
    }

    template <class T>
    static T Entry(T x) {
        return TangentOfAngle(ReduceAngle<Unit>(x));
    }
};

} // namespace nx::array

#endif
