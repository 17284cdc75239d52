#pragma once

#include "model/RestartAnalysis.h"

#include <QPointer>
#include <QScrollArea>

class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace lullwick {

class Card;
class IconLabel;
class RestartModel;

/// The Restart page: what the analysis is for, the Analyze action, the verdict, one card per
/// finding with the stall report's decode and reveal controls, and what the analysis can't see.
/// Redraws from the model's change signals; its buttons call the model's actions.
class RestartView : public QScrollArea {
    Q_OBJECT
public:
    explicit RestartView(RestartModel *model, QWidget *parent = nullptr);

protected:
    void changeEvent(QEvent *event) override;

private:
    void showAnalysis();
    void showAnalyzing();
    void showDecoding();
    void paintAnalyzeButton();

    [[nodiscard]] QWidget *makeAnalyzeBar();
    [[nodiscard]] QWidget *makeVerdict();
    [[nodiscard]] Card *makeFindingCard(const RestartFinding &finding, const RestartAnalysis &analysis);
    [[nodiscard]] QWidget *makeStallControls(const RestartAnalysis &analysis);
    [[nodiscard]] Card *makeCaveat();
    /// Whether `analysis` would be shown with the very cards on screen: the same findings (ids
    /// aside) and the same stall report and decode.
    [[nodiscard]] bool showsCardsOf(const RestartAnalysis &analysis) const;

    RestartModel *m_model;
    QPushButton *m_analyze = nullptr;
    QProgressBar *m_analyzeProgress = nullptr;
    QLabel *m_analyzeProgressText = nullptr;
    QLabel *m_checked = nullptr;
    QLabel *m_hint = nullptr;
    QLabel *m_journalCaveat = nullptr; ///< the caveat's sentence about the system journal
    QWidget *m_content = nullptr;
    IconLabel *m_verdictIcon = nullptr;
    QLabel *m_verdictText = nullptr;
    QVBoxLayout *m_cards = nullptr;
    std::optional<RestartAnalysis> m_cardsOf; ///< the analysis the cards were made for
    // Inside the stall card, which each new analysis replaces.
    QPointer<QPushButton> m_decode;
    QPointer<QProgressBar> m_decodeProgress;
};

} // namespace lullwick
