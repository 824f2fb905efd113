#pragma once

#include <QObject>
#include <QString>

class KS7AnimatingStatusTableView;

/// Makes screen readers see the camera table as its rows alone. Pressing a row does what a click does. May be
/// called repeatedly.
void installCameraTableAccessibility();

/// Tells assistive programs of the table's selected row.
class CameraTableAnnouncer : public QObject {
public:
    explicit CameraTableAnnouncer(KS7AnimatingStatusTableView *table);

    /// Announces on the next turn of the event loop how the selected row or its text has changed. A refresh
    /// that deselects the row and selects it again announces nothing.
    void selectionMayHaveChanged();

private:
    void announce();
    void tellOfRow(int row, int accessibleEvent);

    KS7AnimatingStatusTableView *mTable;
    bool mIsPending = false;
    /// The last announced row and text.
    int mRow = -1;
    QString mText;
};
