#include "hosts/standalone/HostIcon.h"

#include <QIcon>
#include <QIconEngine>
#include <QPainter>
#include <QPixmap>

namespace {

class HostIconEngine final : public QIconEngine {
public:
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        if (mIcon.isNull())
            mIcon = QIcon(QStringLiteral(":/host/ks7-preferences.svg"));
        mIcon.paint(painter, rect, Qt::AlignCenter, mode, state);
    }
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    [[nodiscard]] QIconEngine *clone() const override { return new HostIconEngine(*this); }

private:
    QIcon mIcon;
};

} // namespace

QIcon hostIcon()
{
    return QIcon(new HostIconEngine);
}
