#pragma once

#include <QPointer>
#include <QWidget>

class QLabel;
class QPushButton;
class QTabWidget;

namespace lullwick {

class AssertionsModel;
class RestartModel;
class Spinner;

/// The window's content: a header with the state of the last reading, Copy and Refresh, and the
/// Summary, Restart and Details tabs. It owns both models for its whole life.
class ContentView : public QWidget {
    Q_OBJECT
public:
    /// The tabs, in their order on screen.
    enum class Tab { summary, restart, details };
    Q_ENUM(Tab)

    /// Takes over the models; null ones are made with the fixed tool paths.
    explicit ContentView(AssertionsModel *model = nullptr, RestartModel *restartModel = nullptr,
                         QWidget *parent = nullptr);
    ~ContentView() override;

    [[nodiscard]] AssertionsModel *model() const { return m_model; }
    [[nodiscard]] RestartModel *restartModel() const { return m_restartModel; }

    [[nodiscard]] Tab selectedTab() const;
    void setSelectedTab(Tab tab);

    /// Puts the plain text of the visible tab on the clipboard, replacing what it held.
    void copyVisibleTabContents();

protected:
    void showEvent(QShowEvent *event) override;

private:
    void updateHeader();
    void refresh();
    void buildTab(int index);

    AssertionsModel *m_model;
    RestartModel *m_restartModel;
    bool m_firstShown = false;
    bool m_built[3] = {true, false, false};
    QLabel *m_status = nullptr;
    Spinner *m_spinner = nullptr;
    QPushButton *m_copy = nullptr;
    QPushButton *m_refresh = nullptr;
    QTabWidget *m_tabs = nullptr;
};

} // namespace lullwick
