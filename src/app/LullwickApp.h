#pragma once

#include "platform/Updater.h"

#include <QMainWindow>
#include <memory>

namespace lullwick {

class ContentView;

/// The program: the updater, started at launch, and the one window with its menu.
class LullwickApp {
public:
    /// Builds the window around `content` (a new one with the fixed tool paths when null).
    explicit LullwickApp(ContentView *content = nullptr, std::unique_ptr<Updater> updater = nullptr);
    ~LullwickApp();
    Q_DISABLE_COPY_MOVE(LullwickApp)

    [[nodiscard]] QMainWindow &window() { return *m_window; }
    [[nodiscard]] ContentView &content() { return *m_content; }
    [[nodiscard]] Updater &updater() { return *m_updater; }

    static constexpr QSize minimumSize{640, 480};
    static constexpr QSize idealSize{760, 600};

private:
    std::unique_ptr<Updater> m_updater; // outlives the window, as it does the whole process
    std::unique_ptr<QMainWindow> m_window;
    ContentView *m_content;
};

} // namespace lullwick
