#pragma once

#include <QTableView>

#include <cstdint>
#include <functional>
#include <memory>

namespace platform {
class RunLoop;
class Timer;
}

class CamCell;
class CameraTableModel;
class KS7Cam;
class KS7SettingsWindowController;

/// The camera table: rows come from the controller, and the dots of cameras on their way blink. Rows are
/// chosen by a click alone; every key but Tab is swallowed.
class KS7AnimatingStatusTableView : public QTableView {
    Q_OBJECT
public:
    using Action = std::function<void(QObject *sender)>;

    /// The identifier of the one column.
    static const QString CameraColumn;

    explicit KS7AnimatingStatusTableView(QWidget *parent = nullptr);
    ~KS7AnimatingStatusTableView() override;

    /// The controller, set when the interface is loaded.
    KS7SettingsWindowController *settingsController = nullptr;

    void awakeFromNib(std::shared_ptr<platform::RunLoop> runLoop);

    // The table as the controller sees it.

    /// Asks for the row count again; the selected row stays selected if it is still there.
    void reloadData();
    /// Draws what is visible, before it returns.
    void display();
    /// -1 when no row is selected.
    [[nodiscard]] int selectedRow() const;
    /// The row of the click whose action is running, otherwise -1.
    [[nodiscard]] int clickedRow() const { return mClickedRow; }
    [[nodiscard]] int numberOfRows() const;
    /// Selects this row and no other; a row that does not exist leaves the selection as it is.
    void selectRow(int row);
    void deselectAll();
    /// Whether a person may leave the table without a selected row. The controller always may.
    void setAllowsEmptySelection(bool allows) { mAllowsEmptySelection = allows; }
    [[nodiscard]] bool allowsEmptySelection() const { return mAllowsEmptySelection; }
    void setDataCell(std::unique_ptr<CamCell> cell);
    void setAction(Action action) { mAction = std::move(action); }
    void setDoubleAction(Action action) { mDoubleAction = std::move(action); }
    /// What stands in the table's place while it has no rows.
    void setPlaceholderText(const QString &text);
    [[nodiscard]] QString placeholderText() const { return mPlaceholderText; }

    // The table as a person meets it by other ways than the mouse.

    /// What a click on the row does; nothing on a disabled table or for a row that does not exist.
    void clickRow(int row);
    /// "friendly name, status" of the row.
    [[nodiscard]] QString textOfRow(int row) const;
    /// Null for a row without a record.
    [[nodiscard]] std::shared_ptr<KS7Cam> cameraInRow(int row) const;

    // The status animation.
    [[nodiscard]] std::int32_t cycle() const { return mCycle; }
    void startAnimatingStatus();
    void stopAnimatingStatus();
    [[nodiscard]] bool isAnimatingStatus() const { return mAnimationTimer != nullptr; }
    void cycle(platform::Timer *timer);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags
    selectionCommand(const QModelIndex &index, const QEvent *event = nullptr) const override;

private:
    void setUpLooks();
    void sendAction(int row, const Action &action);
    void describeEmptiness();
    /// Tells assistive programs of a QAccessible::Event of the row.
    void tellOfRow(int row, int accessibleEvent);
    void rememberSelectedRow();
    void announceChangeOfSelectedRow();
    [[nodiscard]] int rowOfClick(const QMouseEvent *event) const;

    std::unique_ptr<platform::Timer> mAnimationTimer;
    std::int32_t mCycle = 0;
    /// Kept with the animation's fields; starts and stops are not counted.
    std::int32_t mRefCount = 0;

    CameraTableModel *mModel;
    bool mAllowsEmptySelection = true;
    int mClickedRow = -1;
    int mPressedRow = -1;
    QString mPlaceholderText;
    /// What assistive programs know of the selected row: its number and its text.
    int mSpokenRow = -1;
    QString mSpokenText;
    Action mAction;
    Action mDoubleAction;
    std::shared_ptr<platform::RunLoop> mRunLoop;
};
