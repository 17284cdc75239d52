#include "platform/Updater.h"

#import <Sparkle/Sparkle.h>

namespace lullwick {

namespace {

/// The standard updater controller: it reads its feed and schedule from the bundle's Info.plist
/// and shows the framework's own dialogs.
class SparkleUpdater final : public Updater {
public:
    using Updater::Updater;
    void start() override
    {
        m_controller = [[SPUStandardUpdaterController alloc] initWithStartingUpdater:YES
                                                                     updaterDelegate:nil
                                                                  userDriverDelegate:nil];
    }
    void checkForUpdates() override { [m_controller checkForUpdates:nil]; }

private:
    SPUStandardUpdaterController *m_controller = nil;
};

} // namespace

std::unique_ptr<Updater> Updater::create(QObject *parent)
{
    return std::make_unique<SparkleUpdater>(parent);
}

} // namespace lullwick
