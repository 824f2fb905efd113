#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// A strip with a lasting message and one button for the action that the message suggests. It is hidden while
/// it has no message.
class NoticeStrip : public QFrame {
    Q_OBJECT
public:
    explicit NoticeStrip(QWidget *parent = nullptr);

    /// An empty message hides the strip.
    void setMessage(const QString &message);
    [[nodiscard]] QString message() const;
    [[nodiscard]] QPushButton *button() const { return mButton; }

private:
    QLabel *mMessage;
    QPushButton *mButton;
};
