#pragma once

#include <QPointer>
#include <QTableView>

#include <cstdint>
#include <functional>
#include <memory>

namespace platform {
class RunLoop;
class Timer;
}

class CamCell;
class CameraTableAnnouncer;
class CameraTableModel;
class CameraTableSource;
class KS7Cam;

/// The camera table. A CameraTableSource supplies its rows. The dots of pairing and starting cameras blink.
/// The user selects a row by a click. Keys other than Tab do nothing and do not reach the parent widget.
class KS7AnimatingStatusTableView : public QTableView {
    Q_OBJECT
public:
    using Action = std::function<void(QObject *sender)>;

    /// The identifier of the table's only column.
    static const QString CameraColumn;

    explicit KS7AnimatingStatusTableView(QWidget *parent = nullptr);
    ~KS7AnimatingStatusTableView() override;

    /// The source of the rows: the pane's controller. PaneNib sets it after it has loaded the interface file.
    CameraTableSource *settingsController = nullptr;

    void awakeFromNib(std::shared_ptr<platform::RunLoop> runLoop);

    // Operations for the controller

    /// Counts the rows again. The selected row stays selected if it still exists.
    void reloadData();
    /// Repaints the visible rows synchronously.
    void display();
    /// Returns the index of the selected row; -1 when no row is selected.
    [[nodiscard]] int selectedRow() const;
    /// Returns the clicked row while the action of the click runs; otherwise -1.
    [[nodiscard]] int clickedRow() const { return mClickedRow; }
    [[nodiscard]] int numberOfRows() const;
    /// Selects this row and deselects all others. Does nothing if the row does not exist.
    void selectRow(int row);
    /// Enables or disables the table. When disabled, the table loses the focus; takeFocusBack() restores it.
    void setUsable(bool usable);
    /// Restores the focus that the table lost when it was disabled. Does nothing if the focus has moved again
    /// since.
    void takeFocusBack();
    /// Clears the selection, if setAllowsEmptySelection() allows that.
    void deselectAll();
    /// Allows deselectAll() to clear the selection. Clicks never clear it, not even with a modifier key.
    void setAllowsEmptySelection(bool allows) { mAllowsEmptySelection = allows; }
    [[nodiscard]] bool allowsEmptySelection() const { return mAllowsEmptySelection; }
    void setDataCell(std::unique_ptr<CamCell> cell);
    void setAction(Action action) { mAction = std::move(action); }
    void setDoubleAction(Action action) { mDoubleAction = std::move(action); }
    /// Sets the text that the table shows while it has no rows.
    void setPlaceholderText(const QString &text);
    [[nodiscard]] QString placeholderText() const { return mPlaceholderText; }

    // Operations for menus and assistive programs

    /// Acts like a click on the row. Does nothing if the table is disabled or the row does not exist.
    void clickRow(int row);
    /// Returns "friendly name, status" of the row.
    [[nodiscard]] QString textOfRow(int row) const;
    /// Returns the camera record of the row; null for a row without a record.
    [[nodiscard]] std::shared_ptr<KS7Cam> cameraInRow(int row) const;

    // Status animation

    [[nodiscard]] std::int32_t cycle() const { return mCycle; }
    void startAnimatingStatus();
    void stopAnimatingStatus();
    [[nodiscard]] bool isAnimatingStatus() const { return mAnimationTimer != nullptr; }
    void cycle(platform::Timer *timer);

    /// Returns the height of a row in pixels. It grows with the desktop's text size.
    [[nodiscard]] int scaledRowHeight() const;
    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void changeEvent(QEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    void rowsInserted(const QModelIndex &parent, int first, int last) override;
    void rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last) override;
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    [[nodiscard]] QItemSelectionModel::SelectionFlags
    selectionCommand(const QModelIndex &index, const QEvent *event = nullptr) const override;

private:
    void setUpLooks();
    void paintFocus(QPainter &painter) const;
    void sendAction(int row, const Action &action);
    [[nodiscard]] int rowOfClick(const QMouseEvent *event) const;

    std::unique_ptr<platform::Timer> mAnimationTimer;
    std::int32_t mCycle = 0;
    /// Always 0. Starts of the animation are not counted: one stop ends it after any number of starts.
    std::int32_t mRefCount = 0;

    CameraTableModel *mModel;
    CameraTableAnnouncer *mAnnouncer;
    bool mAllowsEmptySelection = true;
    int mClickedRow = -1;
    int mPressedRow = -1;
    /// The widget that received the focus when the table was disabled.
    QPointer<QWidget> mFocusHeir;
    QString mPlaceholderText;
    Action mAction;
    Action mDoubleAction;
    std::shared_ptr<platform::RunLoop> mRunLoop;
};
