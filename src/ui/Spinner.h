#pragma once

#include <QBasicTimer>
#include <QWidget>

namespace lullwick {

/// A small indeterminate progress indicator: a ring of fading spokes that turns while shown.
class Spinner : public QWidget {
    Q_OBJECT
public:
    explicit Spinner(QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    QBasicTimer m_timer; // runs only while the spinner is visible
    int m_step = 0;
};

} // namespace lullwick
