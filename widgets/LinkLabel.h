#pragma once

#include <QLabel>

/// A line of plain text whose end looks like a link. This class does not handle clicks.
class LinkLabel : public QLabel {
    Q_OBJECT
public:
    explicit LinkLabel(QWidget *parent = nullptr);

    /// Shows `text` as plain text, with its last `linkLength` characters blue and underlined.
    void setTextWithLink(const QString &text, int linkLength);
    [[nodiscard]] QString plainText() const { return mPlainText; }

protected:
    void changeEvent(QEvent *event) override;

private:
    [[nodiscard]] QColor linkColor() const;
    void render();

    QString mPlainText;
    int mLinkLength = 0;
};
