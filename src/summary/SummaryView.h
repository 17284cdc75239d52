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
class IconLabel;

/// The Summary page: whether anything keeps the computer awake, which kinds of sleep are blocked, by
/// which process, and where to look next. Redraws from the model's change signals; its ordering
/// checkbox writes through to the model.
class SummaryView : public QScrollArea {
    Q_OBJECT
public:
    explicit SummaryView(AssertionsModel *model, QWidget *parent = nullptr);

private:
    void showState();
    void rebuild();
    void showNames();
    void orderBlocks();

    [[nodiscard]] QWidget *makeErrorBox();
    [[nodiscard]] QWidget *makeIntro();
    [[nodiscard]] QWidget *makeVerdict();
    [[nodiscard]] QWidget *makeWhereToLookNext();
    [[nodiscard]] Card *makeSleepBlock(SleepKind kind, const AssertionsSnapshot &snapshot);
    [[nodiscard]] Card *makeOtherAssertionsBlock(const AssertionsSnapshot &snapshot);
    [[nodiscard]] QWidget *makeRows(const QString &explanation, const QList<Assertion> &assertions);

    AssertionsModel *m_model;
    QWidget *m_errorBox;
    QLabel *m_errorText = nullptr;
    QLabel *m_reading;
    QWidget *m_content;
    IconLabel *m_verdictIcon = nullptr;
    QLabel *m_verdictText = nullptr;
    QCheckBox *m_order;
    QVBoxLayout *m_blocks;
    std::array<Card *, 3> m_kindBlocks{};
    Card *m_others = nullptr;

    // The open state of each block belongs to the page, not to a reading: it survives new snapshots.
    QHash<SleepKind, bool> m_expanded;
    bool m_othersExpanded = true;

    // The names the rows show, and the rows that depend on each created-for PID, so that an
    // arriving name redraws only those rows.
    ResolvedNames m_shownNames;
    QMultiHash<qint64, AssertionRow *> m_rowsByCreator;
};

} // namespace lullwick
