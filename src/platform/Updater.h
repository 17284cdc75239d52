#pragma once

#include <QObject>
#include <memory>

namespace lullwick {

/// Looks for newer versions of the program: started at launch, and asked to check by the user.
class Updater : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// The platform's updater for this build.
    [[nodiscard]] static std::unique_ptr<Updater> create(QObject *parent = nullptr);

    /// Called once at launch.
    virtual void start() = 0;
    /// A check the user asked for; it shows its own progress and result.
    virtual void checkForUpdates() = 0;
};

} // namespace lullwick
