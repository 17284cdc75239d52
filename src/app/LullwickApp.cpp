#include "app/LullwickApp.h"

#include "app/ContentView.h"
#include "platform/Updater.h"

#include <QApplication>
#include <QMenuBar>
#include <QMessageBox>

namespace lullwick {

LullwickApp::LullwickApp(ContentView *content, std::unique_ptr<Updater> updater)
    : m_updater(updater ? std::move(updater) : Updater::create()), m_window(std::make_unique<QMainWindow>()),
      m_content(content ? content : new ContentView)
{
    m_updater->start();

    m_window->setObjectName(QStringLiteral("main"));
    m_window->setWindowTitle(QStringLiteral("Lullwick"));
    m_window->setCentralWidget(m_content);
    m_window->setMinimumSize(minimumSize);
    m_window->resize(idealSize);

    // On macOS the roles move both items into the application menu, the update check right after
    // About; elsewhere the Help menu is where people look for them.
    QMenu *menu = m_window->menuBar()->addMenu(QObject::tr("&Help"));
    QAction *about = menu->addAction(QObject::tr("About Lullwick"));
    about->setMenuRole(QAction::AboutRole);
    QObject::connect(about, &QAction::triggered, m_window.get(), [window = m_window.get()] {
        QMessageBox::about(window, QObject::tr("About Lullwick"),
                           QObject::tr("<b>Lullwick %1</b><p>Explains in plain language why your computer "
                                       "won’t sleep and what may be holding up a restart.</p>")
                               .arg(QApplication::applicationVersion()));
    });
    QAction *check = menu->addAction(QObject::tr("Check for Updates…"));
    check->setObjectName(QStringLiteral("checkForUpdates"));
    check->setMenuRole(QAction::ApplicationSpecificRole);
    QObject::connect(check, &QAction::triggered, m_updater.get(), &Updater::checkForUpdates);
}

LullwickApp::~LullwickApp() = default;

} // namespace lullwick
