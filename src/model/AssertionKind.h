#pragma once

#include "model/SleepKind.h"

#include <QHashFunctions>
#include <QString>

namespace lullwick {

/// The classification of a pmset assertion type word: 21 known kinds, or `other` keeping the word.
class AssertionKind {
public:
    enum Case : quint8 {
        preventUserIdleSystemSleep,
        preventSystemSleep,
        preventUserIdleDisplaySleep,
        preventDiskIdle,
        userIsActive,
        systemIsActive,
        noIdleSleepLegacy,
        noDisplaySleepLegacy,
        denySystemSleepLegacy,
        backgroundTask,
        applePushServiceTask,
        interactivePushServiceTask,
        softwareUpdateTask,
        maintenanceWake,
        networkClientActive,
        externalMedia,
        displayWake,
        requiresDisplayAudio,
        awakeOnReservePower,
        internalPreventSleep,
        internalPreventDisplaySleep,
        other,
    };
    static constexpr int knownCaseCount = other;

    /// A payload-free kind (`other` here carries the empty word).
    AssertionKind(Case c) : m_case(c) {} // NOLINT(google-explicit-constructor): cases read as values

    /// `other` carrying `rawType` unchanged, even when it spells a known word.
    [[nodiscard]] static AssertionKind makeOther(QString rawType);

    /// Classifies a pmset type word: exact, case-sensitive match with the known words, else `other`.
    [[nodiscard]] static AssertionKind fromRawType(QStringView rawType);

    [[nodiscard]] Case kindCase() const { return m_case; }
    [[nodiscard]] bool isOther() const { return m_case == other; }
    /// The word an `other` carries; empty for the known kinds.
    [[nodiscard]] const QString &otherText() const { return m_otherText; }

    /// The pmset type word of a known kind, or the carried word of `other`.
    [[nodiscard]] QString typeWord() const;
    /// The program's own name of the kind, e.g. "noIdleSleepLegacy"; "other" for any unknown word.
    /// Scripts match on it rather than on pmset's words, which differ between legacy and modern spellings.
    [[nodiscard]] QString name() const;
    /// The sleep kinds the assertion holds off.
    [[nodiscard]] SleepKindSet blockedSleepKinds() const;

    friend bool operator==(const AssertionKind &a, const AssertionKind &b)
    {
        return a.m_case == b.m_case && (a.m_case != other || a.m_otherText == b.m_otherText);
    }

    friend size_t qHash(const AssertionKind &kind, size_t seed = 0) noexcept
    {
        if (kind.m_case == other)
            return qHashMulti(seed, int(other), kind.m_otherText);
        return qHash(int(kind.m_case), seed);
    }

private:
    Case m_case;
    QString m_otherText;
};

} // namespace lullwick

Q_DECLARE_TYPEINFO(lullwick::AssertionKind, Q_RELOCATABLE_TYPE);
