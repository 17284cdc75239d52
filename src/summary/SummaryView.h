#pragma once

#include "model/AssertionsSnapshot.h"
#include "summary/ResolvedNames.h"

#include <QHash>
#include <QList>
#include <QMultiHash>
#include <QScrollArea>
#include <array>

class QCheckBox;
class QLabel;
class QVBoxLayout;

namespace lullwick {

class AssertionRow;
class AssertionsModel;
class Card;
class DisclosureGroup;
class IconLabel;
class SleepSection;

/// The Summary page: whether anything keeps the computer awake, which kinds of sleep are blocked, by
/// which process, and where to look next. Redraws from the model's change signals; its ordering
/// checkbox writes through to the model.
class SummaryView : public QScrollArea {
    Q_OBJECT
public:
    explicit SummaryView(AssertionsModel *model, QWidget *parent = nullptr);

private:
    /// A collapsible block of the page: a sleep kind's, or the one of assertions that block nothing.
    struct Block {
        Card *card = nullptr;
        DisclosureGroup *group = nullptr;
        IconLabel *icon = nullptr;     ///< a sleep kind's state
        QLabel *count = nullptr;       ///< "3 blockers", or the bare count
        QWidget *content = nullptr;    ///< the explanation, then the rows
        QWidget *notBlocked = nullptr; ///< a sleep kind's "Not blocked." line
        QList<Assertion> assertions;   ///< what the block lists
        QList<AssertionRow *> rows;    ///< the rows built for it, in its order
        bool rowsCurrent = true;       ///< whether `rows` show `assertions`
    };

    void makePage();
    void showState();
    void showSnapshot();
    void showNames();
    void orderBlocks();
    void showVerdict();

    [[nodiscard]] QWidget *makeErrorBox();
    [[nodiscard]] QWidget *makeIntro();
    [[nodiscard]] QWidget *makeVerdict();
    [[nodiscard]] QWidget *makeWhereToLookNext();
    void makeSleepBlock(SleepKind kind);
    void makeOtherAssertionsBlock();
    [[nodiscard]] QWidget *makeContent(const QString &explanation);
    void showSleepBlock(SleepKind kind, QList<Assertion> blockers);
    /// Lists `assertions` in `block`: now if it is open, else when it is first opened.
    void showRows(Block &block, QList<Assertion> assertions);
    /// Makes the rows of `block` show its assertions, keeping the rows of the same assertions.
    void syncRows(Block &block);
    void indexRows();

    AssertionsModel *m_model;
    QWidget *m_errorBox;
    QLabel *m_errorText = nullptr;
    QLabel *m_reading;
    QWidget *m_content;
    IconLabel *m_verdictIcon = nullptr;
    QLabel *m_verdictText = nullptr;
    QCheckBox *m_order = nullptr;
    SleepSection *m_sleepSection = nullptr;
    QVBoxLayout *m_blocks = nullptr;
    std::array<Block, 3> m_kindBlocks{};
    Block m_others;

    // The open state of each block belongs to the page, not to a reading: it survives new snapshots.
    QHash<SleepKind, bool> m_expanded;
    bool m_othersExpanded = true;

    // The names the rows show, and the rows that depend on each created-for PID, so that an
    // arriving name redraws only those rows.
    ResolvedNames m_shownNames;
    QMultiHash<qint64, AssertionRow *> m_rowsByCreator;
};

} // namespace lullwick
