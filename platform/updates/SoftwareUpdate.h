#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace platform {

class Bundle;

/// The newer version that an updater has found, and the progress of its installation. Views observe changed()
/// and emit the user's choices as signals of this object.
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

    // The updater calls these functions to set the stage.
    void offer(const QString &version);
    void progress(int percentage);
    void succeed();
    void fail(const QString &reason);
    void withdraw();

Q_SIGNALS:
    void changed();
    // The view emits these signals when the user has chosen.
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

    /// Starts a search for an update, and offers an update that is found. Does not block.
    virtual void applicationDidFinishLaunching() = 0;
};

/// The update framework. It has one shared updater for each bundle.
class SoftwareUpdateFramework {
public:
    virtual ~SoftwareUpdateFramework() = default;

    /// Returns the bundle's shared updater, which the first call makes.
    virtual std::shared_ptr<SoftwareUpdater> updaterForBundle(const std::shared_ptr<Bundle> &bundle) = 0;
    /// Makes a new updater for the bundle.
    virtual std::shared_ptr<SoftwareUpdater> initForBundle(const std::shared_ptr<Bundle> &bundle) = 0;
    /// The offer that all updaters of this framework fill in. It lives as long as the framework.
    virtual UpdateOffer &offer() = 0;
};

} // namespace platform
