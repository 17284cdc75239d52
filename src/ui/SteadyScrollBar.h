#pragma once

#include <QScrollBar>
#include <optional>

namespace lullwick {

/// A scroll bar that paints again only what a new range changes: its handle, where it was and where
/// it is. A page whose content grows or shrinks by a line changes the bar's range with every
/// change, yet its handle moves by a pixel at most, and painting a whole scroll bar costs as much
/// as painting several rows.
class SteadyScrollBar : public QScrollBar {
    Q_OBJECT
public:
    explicit SteadyScrollBar(Qt::Orientation orientation, QWidget *parent = nullptr);

protected:
    void sliderChange(SliderChange change) override;

private:
    /// What the bar shows of its range: where its handle is, and whether there is anything to scroll,
    /// at its size (a resized bar is painted whole anyway, but its handle was elsewhere).
    struct Look {
        QSize size;
        QRect handle;
        bool scrolls = false;
        bool operator==(const Look &) const = default;
    };
    [[nodiscard]] Look look() const;

    std::optional<Look> m_shown;
};

} // namespace lullwick
