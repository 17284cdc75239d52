#include "app/ContentView.h"

#include "details/DetailsClipboard.h"
#include "details/DetailsView.h"
#include "platform/DateFormat.h"
#include "profile/Profile.h"
#include "restart/RestartClipboard.h"
#include "restart/RestartModel.h"
#include "restart/RestartView.h"
#include "summary/AssertionsModel.h"
#include "summary/SummaryClipboard.h"
#include "summary/SummaryView.h"
#include "ui/Icons.h"
#include "ui/Spinner.h"
#include "ui/TextStyle.h"

#include <QClipboard>
#include <QFrame>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTabWidget>
#include <QVBoxLayout>

namespace lullwick {

namespace {

QPushButton *headerButton(const QString &text, const QString &symbol, QWidget *parent)
{
    auto *button = new QPushButton(text, parent);
    button->setAccessibleName(text);
    button->setIcon(Icons::icon(symbol, NamedColor::Role::primary, button));
    return button;
}

} // namespace

ContentView::ContentView(AssertionsModel *model, RestartModel *restartModel, QWidget *parent)
    : QWidget(parent),
      m_model(model ? model
                    : new AssertionsModel(ToolPaths::pmset(), ToolPaths::ps(), SleepCheck::forProfile())),
      m_restartModel(restartModel ? restartModel : new RestartModel)
{
    m_model->setParent(this);
    m_restartModel->setParent(this);

    auto *title = TextStyle::label(QStringLiteral("Lullwick"), TextStyle::Style::title2,
                                   NamedColor::Role::primary, TextStyle::Option::semibold);
    title->setObjectName(QStringLiteral("title"));
    m_status = TextStyle::label(QString(), TextStyle::Style::caption, NamedColor::Role::secondary);
    m_status->setObjectName(QStringLiteral("status"));
    auto *titleColumn = new QVBoxLayout;
    titleColumn->setSpacing(2);
    titleColumn->addWidget(title);
    titleColumn->addWidget(m_status);

    m_spinner = new Spinner(this);
    m_spinner->setObjectName(QStringLiteral("spinner"));
    m_copy = headerButton(tr("Copy"), QStringLiteral("doc.on.doc"), this);
    m_copy->setObjectName(QStringLiteral("copy"));
    m_copy->setToolTip(tr("Copy the current tab's text to the clipboard"));
    m_refresh = headerButton(tr("Refresh"), QStringLiteral("arrow.clockwise"), this);
    m_refresh->setObjectName(QStringLiteral("refresh"));
    // Command-R on macOS: Qt maps Control to Command there.
    m_refresh->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_R));
    connect(m_copy, &QPushButton::clicked, this, &ContentView::copyVisibleTabContents);
    connect(m_refresh, &QPushButton::clicked, this, &ContentView::refresh);

    auto *header = new QHBoxLayout;
    header->setContentsMargins(16, 12, 16, 12);
    header->setSpacing(12);
    header->addLayout(titleColumn);
    header->addStretch(1);
    header->addWidget(m_spinner);
    header->addWidget(m_copy);
    header->addWidget(m_refresh);

    auto *divider = new QFrame(this);
    divider->setFrameShape(QFrame::HLine);
    divider->setFrameShadow(QFrame::Sunken);

    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabs"));
    m_tabs->setDocumentMode(true);
    m_tabs->addTab(new SummaryView(m_model, m_tabs), tr("Summary"));
    // The tabs behind the first are built when first shown, so the window paints sooner.
    m_tabs->addTab(new QWidget(m_tabs), tr("Restart"));
    m_tabs->addTab(new QWidget(m_tabs), tr("Details"));
    connect(m_tabs, &QTabWidget::currentChanged, this, &ContentView::buildTab);
    const char *symbols[] = {"moon.zzz", "restart.circle", "doc.text.magnifyingglass"};
    for (int i = 0; i < m_tabs->count(); ++i)
        m_tabs->setTabIcon(i,
                           Icons::icon(QString::fromLatin1(symbols[i]), NamedColor::Role::primary, m_tabs));

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(header);
    layout->addWidget(divider);
    layout->addSpacing(8);
    layout->addWidget(m_tabs, 1);

    connect(m_model, &AssertionsModel::snapshotChanged, this, &ContentView::updateHeader);
    connect(m_model, &AssertionsModel::isFetchingChanged, this, &ContentView::updateHeader);
    updateHeader();
}

ContentView::~ContentView() = default;

void ContentView::buildTab(int index)
{
    if (index == 0 || m_built[index])
        return;
    m_built[index] = true;
    QWidget *view = index == int(Tab::restart) ? static_cast<QWidget *>(new RestartView(m_restartModel))
                                               : new DetailsView(m_model);
    const QIcon icon = m_tabs->tabIcon(index);
    const QString label = m_tabs->tabText(index);
    QWidget *placeholder = m_tabs->widget(index);
    const QSignalBlocker quiet(m_tabs); // the swap must not look like the user changing tabs
    m_tabs->removeTab(index);
    m_tabs->insertTab(index, view, icon, label);
    m_tabs->setCurrentIndex(index);
    delete placeholder;
}

ContentView::Tab ContentView::selectedTab() const
{
    return Tab(m_tabs->currentIndex());
}

void ContentView::setSelectedTab(Tab tab)
{
    m_tabs->setCurrentIndex(int(tab));
}

void ContentView::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (m_firstShown)
        return;
    m_firstShown = true;
    refresh();
}

void ContentView::refresh()
{
    // The button and its shortcut are disabled while a reading runs; this guards direct calls too.
    if (!m_model->isFetching())
        m_model->refresh();
}

void ContentView::updateHeader()
{
    const bool fetching = m_model->isFetching();
    const auto &snapshot = m_model->snapshot();
    if (snapshot)
        m_status->setText(tr("Last checked %1").arg(DateFormat::standardTime(snapshot->capturedAt)));
    else if (fetching)
        m_status->setText(Profile::current().summary().reading);
    else
        m_status->setText(Profile::current().summary().clickRefresh);
    m_spinner->setVisible(fetching);
    m_copy->setEnabled(snapshot.has_value());
    m_refresh->setEnabled(!fetching);
}

void ContentView::copyVisibleTabContents()
{
    QString text;
    switch (selectedTab()) {
    case Tab::summary:
        text = SummaryClipboard::text(m_model->snapshot(), m_model->resolvedNames(), {},
                                      m_model->sleepFindings());
        break;
    case Tab::restart:
        text = RestartClipboard::text(m_restartModel->analysis());
        break;
    case Tab::details:
        text = DetailsClipboard::text(m_model->snapshot(), m_model->settingsRaw());
        break;
    }
    // Replaces every format the clipboard held, so nothing of the earlier content is left.
    QGuiApplication::clipboard()->setText(text);
}

} // namespace lullwick
