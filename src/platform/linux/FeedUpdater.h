#pragma once

#include "platform/Updater.h"

#include <QDialog>
#include <QNetworkReply>
#include <QPointer>
#include <QString>
#include <QUrl>

class QLabel;
class QNetworkAccessManager;
class QProgressBar;
class QPushButton;

namespace lullwick {

/// Reads an appcast feed and tells the user, in its own dialog, whether a newer version exists.
/// It never checks by itself: starting it only makes it ready for the user's request.
class FeedUpdater final : public Updater {
    Q_OBJECT
public:
    /// An empty `feed` means the build names no feed; a check then says so.
    FeedUpdater(QUrl feed, QString currentVersion, QObject *parent = nullptr);
    ~FeedUpdater() override;

    void start() override {}
    void checkForUpdates() override;

    /// The dialog of the latest check, if it is still open.
    [[nodiscard]] QDialog *dialog() const { return m_dialog; }

private:
    void ensureDialog();
    void show(const QString &headline, const QString &detail, bool busy);
    void finished(QNetworkReply *reply);

    const QUrl m_feed;
    const QString m_currentVersion;
    QNetworkAccessManager *m_network = nullptr;
    QPointer<QNetworkReply> m_reply;
    QPointer<QDialog> m_dialog;
    QLabel *m_headline = nullptr;
    QLabel *m_detail = nullptr;
    QProgressBar *m_progress = nullptr;
    QPushButton *m_download = nullptr;
    QPushButton *m_close = nullptr;
    QUrl m_downloadPage;
};

} // namespace lullwick
