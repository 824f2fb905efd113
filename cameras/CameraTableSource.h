#pragma once

#include "platform/bus/NotificationCenter.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <memory>

class KS7Cam;
class QObject;

/// Supplies the rows of the camera table and is told when its selection changes.
class CameraTableSource {
public:
    virtual ~CameraTableSource() = default;

    virtual int numberOfRowsInTableView(const QObject *table) = 0;
    /// Returns the row's std::shared_ptr<KS7Cam>, or an invalid variant if the row has no record. Returns an
    /// empty string for an unknown column.
    virtual QVariant tableViewObjectValue(const QObject *table, const QString &column, int row) = 0;
    virtual void tableViewSelectionDidChange(const platform::Notification &notification) = 0;
    [[nodiscard]] virtual const QHash<QString, std::shared_ptr<KS7Cam>> &cameras() const = 0;
};
