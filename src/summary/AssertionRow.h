#pragma once

#include "model/Assertion.h"
#include "profile/Profile.h"
#include "summary/AssertionRowText.h"
#include "summary/ResolvedNames.h"
#include "ui/HeightCache.h"

#include <QWidget>

class QLabel;

namespace lullwick {

/// Puts `pid` on the clipboard, then opens the process viewer, if there is one, so the user can
/// paste it into the search field. A failure to open it is ignored; the PID stays on the clipboard.
void revealInProcessViewer(qint64 pid,
                           const std::optional<OpenTarget> &viewer = Profile::current().processViewer());

/// The held badge: "Held " and the shortened held time on a tinted rounded background; hidden
/// where the time is not known.
[[nodiscard]] QLabel *heldDurationLabel(const QString &timeHeld, QWidget *parent = nullptr);

/// One assertion on the Summary page: what holds it, for whom, why, and what to do about it.
/// It places its lines itself and remembers its height for the widths it was asked about: a
/// layout of its own would be asked to lay out all of its lines again whenever the page's
/// layout asks at another width, and a page holds hundreds of rows.
class AssertionRow : public QWidget {
    Q_OBJECT
public:
    AssertionRow(Assertion assertion, const ResolvedNames &names, QWidget *parent = nullptr);

    [[nodiscard]] const Assertion &assertion() const { return m_assertion; }
    /// The process the assertion was created for, whose name changes what the row says.
    [[nodiscard]] std::optional<qint64> createdForPID() const { return m_text.createdForPID; }

    /// Shows the texts that depend on the created-for name, as `names` has it.
    void showNames(const ResolvedNames &names);
    /// Shows `assertion` instead, the same process's assertion in a newer reading; only the texts
    /// that differ are set again.
    void showAssertion(Assertion assertion, const ResolvedNames &names);

    [[nodiscard]] bool hasHeightForWidth() const override { return true; }
    [[nodiscard]] int heightForWidth(int width) const override;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    /// The row's height at `width`; with `apply`, also moves its lines there.
    int place(int width, bool apply) const;
    /// The widest of the row's lines, at their preferred or their least widths.
    [[nodiscard]] int widest(bool minimum) const;
    /// Forgets the heights and places the lines again, after a line changed.
    void relayout();

    /// Shows `text` in the optional line `label` at `position` among the optional lines, creating
    /// the label on first use; hides it when `text` is absent.
    void showLine(QLabel *&label, int position, const std::optional<QString> &text);

    Assertion m_assertion;
    AssertionRowText m_text;
    QLabel *m_title;
    QLabel *m_process;
    QLabel *m_held;
    QLabel *m_quote = nullptr;
    QLabel *m_createdFor = nullptr;
    QLabel *m_explanation = nullptr;
    QLabel *m_callToAction = nullptr;
    QWidget *m_button;
    mutable HeightCache m_heights;
};

} // namespace lullwick
