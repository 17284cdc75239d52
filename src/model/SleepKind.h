#pragma once

#include <QString>
#include <array>
#include <optional>

namespace lullwick {

/// The three kinds of sleep an assertion can hold off, in their declared order.
enum class SleepKind : quint8 { idleSystem, system, display };

/// All sleep kinds in declared order.
inline constexpr std::array<SleepKind, 3> allSleepKinds{SleepKind::idleSystem, SleepKind::system,
                                                        SleepKind::display};

/// The kind's label, e.g. "Idle system sleep".
[[nodiscard]] QString rawValue(SleepKind kind);

/// The kind whose label is exactly `rawValue`, if any.
[[nodiscard]] std::optional<SleepKind> sleepKindFromRawValue(QStringView rawValue);

/// A set of sleep kinds; only membership and emptiness mean anything.
class SleepKindSet {
public:
    constexpr SleepKindSet() = default;
    constexpr SleepKindSet(std::initializer_list<SleepKind> kinds)
    {
        for (SleepKind k : kinds)
            m_bits |= bit(k);
    }

    [[nodiscard]] constexpr bool contains(SleepKind kind) const { return m_bits & bit(kind); }
    [[nodiscard]] constexpr bool isEmpty() const { return m_bits == 0; }
    constexpr bool operator==(const SleepKindSet &) const = default;

private:
    static constexpr quint8 bit(SleepKind kind) { return quint8(1u << unsigned(kind)); }
    quint8 m_bits = 0;
};

} // namespace lullwick
