#pragma once

#include <QFrame>

class QLabel;
class QPushButton;

/// A strip that says something lasting and offers one thing to do about it; hidden while there is nothing to
/// say.
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
