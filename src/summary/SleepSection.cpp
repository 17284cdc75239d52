#include "summary/SleepSection.h"

#include "platform/Workspace.h"
#include "profile/Profile.h"
#include "ui/FindingCard.h"
#include "ui/LinkButton.h"
#include "ui/TextStyle.h"
#include "ui/Visibility.h"

#include <QLabel>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace lullwick {

using NamedColor::Role;
using TextStyle::Option;
using TextStyle::Style;

SleepSection::SleepSection(QWidget *parent) : QWidget(parent)
{
    const Profile &profile = Profile::current();
    setObjectName(u"sleepFindings"_s);
    // Hidden outright: a page shown later shows every child not hidden on purpose.
    hide();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    column->addWidget(
        TextStyle::label(profile.sleep().sectionTitle, Style::title3, Role::primary, Option::semibold));
    column->addWidget(
        TextStyle::label(profile.sleep().sectionIntro, Style::callout, Role::secondary, Option::wrap));
    m_caveat = TextStyle::label(profile.lastSuspends().journalCaveat, Style::callout, Role::secondary,
                                Option::wrap | Option::selectable);
    m_caveat->setObjectName(u"sleepJournalCaveat"_s);
    m_caveat->hide();
    column->addWidget(m_caveat);
    m_cards = new QVBoxLayout;
    m_cards->setSpacing(10);
    column->addLayout(m_cards);
}

void SleepSection::showFindings(const std::optional<SleepFindings> &sleep)
{
    const QList<Finding> findings = sleep ? sleep->findings : QList<Finding>();
    while (QLayoutItem *item = m_cards->takeAt(0)) {
        delete item->widget();
        delete item;
    }
    // The desktop's own power settings, for the findings about its automatic suspend and lid.
    const Profile &profile = Profile::current();
    std::optional<OpenTarget> powerSettings;
    if (!profile.desktopLinks().links.isEmpty()) {
        const QString &label = profile.desktopLinks().links.constFirst().label;
        for (const OpenTarget &link : profile.settingsLinks()) {
            if (link.label == label)
                powerSettings = link;
        }
    }
    for (const Finding &finding : findings) {
        LinkButton *open = nullptr;
        if (powerSettings && finding.source == profile.sleep().desktopSource) {
            open = new LinkButton(powerSettings->label, u"gearshape"_s);
            open->setObjectName(u"sleepFindingLink"_s);
            connect(open, &LinkButton::clicked, this, [target = *powerSettings] { Workspace::open(target); });
        }
        auto *card = new FindingCard(finding, open);
        m_cards->addWidget(card);
        if (isVisible())
            card->show();
    }
    const bool journalDenied = sleep && sleep->journalDenied;
    setShown(m_caveat, journalDenied);
    setShown(this, !findings.isEmpty() || journalDenied);
}

} // namespace lullwick
