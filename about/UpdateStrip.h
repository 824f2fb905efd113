#pragma once

#include "platform/updates/SoftwareUpdate.h"

#include <QFrame>

class AdaptiveColumns;
class QLabel;
class QProgressBar;
class QPushButton;

/// The strip at the top of the pane that offers an update and shows the progress of its installation. It is
/// hidden while there is no offer.
class UpdateStrip final : public QFrame {
    Q_OBJECT
public:
    /// If `offer` is destroyed before the strip, the strip keeps its last state.
    explicit UpdateStrip(platform::UpdateOffer &offer, QWidget *parent = nullptr);

private:
    using Stage = platform::UpdateOffer::Stage;

    QPushButton *addButton(const QString &name, const QString &text, void (platform::UpdateOffer::*answer)());
    void follow();
    void say(Stage stage);
    void showProgress(int percentage);
    [[nodiscard]] QString message() const;

    platform::UpdateOffer &mOffer;
    /// Contains message and buttons: side by side, or one above the other in a narrow window.
    AdaptiveColumns *mRow;
    QLabel *mMessage;
    QProgressBar *mProgress;
    QPushButton *mInstall;
    QPushButton *mLater;
    QPushButton *mSkip;
    QPushButton *mDismiss;
    Stage mShown = Stage::None;
};
