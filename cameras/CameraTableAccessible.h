#pragma once

#include <QObject>
#include <QString>

class KS7AnimatingStatusTableView;

/// Makes screen readers see the camera table as its rows alone. Pressing a row does what a click does. May be
/// called repeatedly.
void installCameraTableAccessibility();

/// Tells assistive programs of the table's rows and which one is selected.
class CameraTableAnnouncer : public QObject {
public:
    explicit CameraTableAnnouncer(KS7AnimatingStatusTableView *table);

    /// Announces on the next turn of the event loop how the selected row or its text has changed. A refresh
    /// that deselects the row and selects it again announces nothing.
    void selectionMayHaveChanged();
    /// Tells of the selected row on the next turn: Qt tells of the table itself after its focus event.
    void keyboardHasCome();
    /// Sends a QAccessible::Event of a row that exists.
    void tellOfRow(int row, int accessibleEvent);

private:
    void announce();

    KS7AnimatingStatusTableView *mTable;
    bool mIsPending = false;
    /// The last announced row and text.
    int mRow = -1;
    QString mText;
};
