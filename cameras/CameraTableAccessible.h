#pragma once

#include <QObject>
#include <QString>

class KS7AnimatingStatusTableView;

/// Makes assistive programs see the rows of the camera table, but not its hidden headers. When such a program
/// presses a row, the table acts as after a click. Later calls of this function have no effect.
void installCameraTableAccessibility();

/// Sends accessibility events about the table's rows and its selection.
class CameraTableAnnouncer : public QObject {
public:
    explicit CameraTableAnnouncer(KS7AnimatingStatusTableView *table);

    /// Compares the selected row and its text with the last announcement, and announces a difference. The
    /// comparison runs on the next turn of the event loop, so a refresh that selects the same row again
    /// announces nothing.
    void selectionMayHaveChanged();
    /// Queues a focus event for the selected row. Call it from focusInEvent(): Qt sends the table's own focus
    /// event afterwards, and the row's event must follow it.
    void keyboardHasCome();
    /// Sends a QAccessible::Event about a row. Does nothing for a row that does not exist.
    void tellOfRow(int row, int accessibleEvent);

private:
    void announce();
    /// A negative row means the table itself.
    void tellOfFocus(int row);

    KS7AnimatingStatusTableView *mTable;
    bool mIsPending = false;
    /// The row and the text of the last announcement.
    int mRow = -1;
    QString mText;
};
