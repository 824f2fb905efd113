#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace platform {

class Bundle;

/// The newer version that an updater has found, and the progress of its installation. Views observe
/// changed(); the user's choices reach the updater through the same object.
class UpdateOffer final : public QObject {
    Q_OBJECT
public:
    enum class Stage { None, Offered, Installing, Installed, Failed };
    static constexpr int UnknownPercentage = -1;

    [[nodiscard]] Stage stage() const { return mStage; }
    /// The newer version; empty in Stage::None.
    [[nodiscard]] QString version() const { return mVersion; }
    /// Progress of the installation, 0 to 100, or UnknownPercentage.
    [[nodiscard]] int percentage() const { return mPercentage; }
    /// Reason of a failed installation in the package service's words; may be empty.
    [[nodiscard]] QString reason() const { return mReason; }

    // Called by the updater.
    void offer(const QString &version);
    void progress(int percentage);
    void succeed();
    void fail(const QString &reason);
    void withdraw();

Q_SIGNALS:
    void changed();
    // Called by the view for the user's choices.
    void installChosen();
    void laterChosen();
    void skipChosen();

private:
    void enter(Stage stage);

    Stage mStage = Stage::None;
    QString mVersion;
    int mPercentage = UnknownPercentage;
    QString mReason;
};

/// The update framework's updater for one bundle.
class SoftwareUpdater {
public:
    virtual ~SoftwareUpdater() = default;

    /// Starts the framework's cycle: look for an update and offer it. Does not block.
    virtual void applicationDidFinishLaunching() = 0;
};

/// The update framework: one shared updater for each bundle.
class SoftwareUpdateFramework {
public:
    virtual ~SoftwareUpdateFramework() = default;

    /// The bundle's shared updater, made on the first call and kept.
    virtual std::shared_ptr<SoftwareUpdater> updaterForBundle(const std::shared_ptr<Bundle> &bundle) = 0;
    /// A new updater for the bundle.
    virtual std::shared_ptr<SoftwareUpdater> initForBundle(const std::shared_ptr<Bundle> &bundle) = 0;
    /// The offer that this framework's updaters fill in; lives as long as the framework.
    virtual UpdateOffer &offer() = 0;
};

} // namespace platform
