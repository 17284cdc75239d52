#include "platform/linux/FeedUpdater.h"

#include "platform/AppcastFeed.h"

#include <QDesktopServices>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace lullwick {

namespace {
// A feed that stops answering must not leave the dialog spinning for ever.
constexpr int feedTimeoutMs = 30'000;
} // namespace

FeedUpdater::FeedUpdater(QUrl feed, QString currentVersion, QObject *parent)
    : Updater(parent), m_feed(std::move(feed)), m_currentVersion(std::move(currentVersion))
{}

FeedUpdater::~FeedUpdater()
{
    delete m_dialog; // a top-level dialog has no parent to take it along
}

void FeedUpdater::ensureDialog()
{
    if (m_dialog)
        return;
    auto *dialog = new QDialog;
    dialog->setObjectName(QStringLiteral("updateDialog"));
    dialog->setWindowTitle(tr("Check for Updates"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setMinimumWidth(380);

    m_headline = new QLabel(dialog);
    m_headline->setObjectName(QStringLiteral("updateHeadline"));
    QFont bold = m_headline->font();
    bold.setBold(true);
    m_headline->setFont(bold);
    m_detail = new QLabel(dialog);
    m_detail->setObjectName(QStringLiteral("updateDetail"));
    m_detail->setWordWrap(true);
    m_detail->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_progress = new QProgressBar(dialog);
    m_progress->setRange(0, 0);
    m_progress->setTextVisible(false);

    auto *buttons = new QDialogButtonBox(dialog);
    m_download = buttons->addButton(tr("Open Download Page"), QDialogButtonBox::AcceptRole);
    m_download->setObjectName(QStringLiteral("updateDownload"));
    m_close = buttons->addButton(QDialogButtonBox::Close);
    m_close->setObjectName(QStringLiteral("updateClose"));
    for (QPushButton *button : {m_download, m_close})
        button->setAccessibleName(button->text().remove(u'&'));
    connect(m_download, &QPushButton::clicked, dialog, [this, dialog] {
        QDesktopServices::openUrl(m_downloadPage);
        dialog->accept();
    });
    connect(m_close, &QPushButton::clicked, dialog, &QDialog::reject);
    connect(dialog, &QDialog::finished, this, [this] {
        if (m_reply)
            m_reply->abort();
    });

    auto *layout = new QVBoxLayout(dialog);
    layout->addWidget(m_headline);
    layout->addWidget(m_detail);
    layout->addWidget(m_progress);
    layout->addWidget(buttons);
    m_dialog = dialog;
}

void FeedUpdater::show(const QString &headline, const QString &detail, bool busy)
{
    ensureDialog();
    m_headline->setText(headline);
    m_detail->setText(detail);
    m_progress->setVisible(busy);
    m_download->setVisible(!busy && !m_downloadPage.isEmpty());
    m_close->setText(busy ? tr("Cancel") : tr("Close"));
    m_close->setAccessibleName(m_close->text());
    m_dialog->show();
    m_dialog->raise();
    m_dialog->activateWindow();
}

void FeedUpdater::checkForUpdates()
{
    m_downloadPage.clear();
    if (m_feed.isEmpty()) {
        show(tr("Update checks aren’t available in this build."),
             tr("This copy of Lullwick was built without an update feed address, so it can’t look for "
                "newer versions."),
             false);
        return;
    }
    if (m_reply) { // a check is already under way: just bring its dialog forward
        show(m_headline->text(), m_detail->text(), true);
        return;
    }
    show(tr("Checking for updates…"), tr("Looking for a newer version of Lullwick."), true);
    QNetworkRequest request(m_feed);
    request.setTransferTimeout(feedTimeoutMs);
    // The network stack is made for the first check the user asks for, not at start-up.
    if (!m_network)
        m_network = new QNetworkAccessManager(this);
    m_reply = m_network->get(request);
    QNetworkReply *reply = m_reply;
    connect(reply, &QNetworkReply::finished, this, [this, reply] { finished(reply); });
}

void FeedUpdater::finished(QNetworkReply *reply)
{
    reply->deleteLater();
    if (reply->error() == QNetworkReply::OperationCanceledError && !m_dialog)
        return; // the user closed the dialog
    if (reply->error() != QNetworkReply::NoError) {
        show(tr("Couldn’t check for updates."), reply->errorString(), false);
        return;
    }
    const std::optional<QList<AppcastItem>> items = AppcastFeed::parse(reply->readAll());
    if (!items) {
        show(tr("Couldn’t check for updates."),
             tr("The update feed at %1 isn’t a feed Lullwick can read.").arg(m_feed.toDisplayString()),
             false);
        return;
    }
    const AppcastItem newest = AppcastFeed::newest(*items);
    if (AppcastFeed::compareVersions(newest.version, m_currentVersion) > 0) {
        m_downloadPage = newest.downloadPage;
        show(tr("A new version of Lullwick is available."),
             tr("Lullwick %1 is available — you have %2.").arg(newest.version, m_currentVersion), false);
    } else {
        show(tr("You’re up to date."),
             tr("Lullwick %1 is the newest version available.").arg(m_currentVersion), false);
    }
}

std::unique_ptr<Updater> Updater::create(QObject *parent)
{
    return std::make_unique<FeedUpdater>(QUrl(QStringLiteral(LULLWICK_APPCAST_URL)),
                                         QStringLiteral(LULLWICK_VERSION), parent);
}

} // namespace lullwick
