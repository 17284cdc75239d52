#pragma once

#include "sleep/SleepCheck.h"

#include <QWidget>
#include <optional>

class QLabel;
class QVBoxLayout;

namespace lullwick {

/// The Summary's section of the sleep check: why the computer may still not sleep, one finding
/// card each, the desktop's power settings beside the findings about its automatic suspend, and
/// the caveat when the system journal could not be read. Hidden while the check has nothing to say.
class SleepSection : public QWidget {
    Q_OBJECT
public:
    explicit SleepSection(QWidget *parent = nullptr);

    /// Shows what the check found, in its order; nothing hides the section.
    void showFindings(const std::optional<SleepFindings> &sleep);

private:
    QLabel *m_caveat = nullptr;
    QVBoxLayout *m_cards = nullptr;
};

} // namespace lullwick
