#pragma once

#include <QObject>
#include <QString>

#include <memory>

namespace platform {

class Bundle;

/// The newer version that an updater has found and what becomes of it. Whoever shows it follows
/// changed(); the person's answers go back to the updater through the same object.
class UpdateOffer final : public QObject {
    Q_OBJECT
public:
    enum class Stage { None, Offered, Installing, Installed, Failed };
    static constexpr int UnknownPercentage = -1;

    [[nodiscard]] Stage stage() const { return mStage; }
    /// The newer version; empty in Stage::None.
    [[nodiscard]] QString version() const { return mVersion; }
    /// How much of the installation is done, 0 to 100, or UnknownPercentage.
    [[nodiscard]] int percentage() const { return mPercentage; }
    /// Why the installation failed, in the words of the package service; may be empty.
    [[nodiscard]] QString reason() const { return mReason; }

    // What the updater reports.
    void offer(const QString &version);
    void progress(int percentage);
    void succeed();
    void fail(const QString &reason);
    void withdraw();

Q_SIGNALS:
    void changed();
    // What the person answers.
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

    /// Starts the framework's own cycle: look for an update, offer it. Returns at once.
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
    /// Where the updaters of this framework report; lives as long as the framework.
    virtual UpdateOffer &offer() = 0;
};

} // namespace platform
