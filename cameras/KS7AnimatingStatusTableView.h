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

/// The camera table. Its rows come from the controller; the dots of pairing and starting cameras blink. Only
/// a click selects a row; every key but Tab is swallowed.
class KS7AnimatingStatusTableView : public QTableView {
    Q_OBJECT
public:
    using Action = std::function<void(QObject *sender)>;

    /// The identifier of the one column.
    static const QString CameraColumn;

    explicit KS7AnimatingStatusTableView(QWidget *parent = nullptr);
    ~KS7AnimatingStatusTableView() override;

    /// The pane's controller, set when the interface is loaded.
    CameraTableSource *settingsController = nullptr;

    void awakeFromNib(std::shared_ptr<platform::RunLoop> runLoop);

    // Operations for the controller

    /// Counts the rows again. The selected row stays selected if it still exists.
    void reloadData();
    /// Repaints the visible rows before it returns.
    void display();
    /// -1 when no row is selected.
    [[nodiscard]] int selectedRow() const;
    /// The clicked row while its action runs, otherwise -1.
    [[nodiscard]] int clickedRow() const { return mClickedRow; }
    [[nodiscard]] int numberOfRows() const;
    /// Selects this row only. A row that does not exist leaves the selection unchanged.
    void selectRow(int row);
    /// Enables or disables the table; a disabled table cannot keep the focus.
    void setUsable(bool usable);
    /// Takes back the focus that was lost when the table was disabled, unless it has moved on since.
    void takeFocusBack();
    /// Does nothing while the table does not allow an empty selection.
    void deselectAll();
    /// Applies to deselectAll() only, because clicks never deselect, with any modifier.
    void setAllowsEmptySelection(bool allows) { mAllowsEmptySelection = allows; }
    [[nodiscard]] bool allowsEmptySelection() const { return mAllowsEmptySelection; }
    void setDataCell(std::unique_ptr<CamCell> cell);
    void setAction(Action action) { mAction = std::move(action); }
    void setDoubleAction(Action action) { mDoubleAction = std::move(action); }
    /// Text shown while the table has no rows.
    void setPlaceholderText(const QString &text);
    [[nodiscard]] QString placeholderText() const { return mPlaceholderText; }

    // Operations for menus and assistive programs

    /// Does what a click on the row does: nothing in a disabled table or for a row that does not exist.
    void clickRow(int row);
    /// "friendly name, status" of the row.
    [[nodiscard]] QString textOfRow(int row) const;
    /// Null for a row without a record.
    [[nodiscard]] std::shared_ptr<KS7Cam> cameraInRow(int row) const;

    // Status animation

    [[nodiscard]] std::int32_t cycle() const { return mCycle; }
    void startAnimatingStatus();
    void stopAnimatingStatus();
    [[nodiscard]] bool isAnimatingStatus() const { return mAnimationTimer != nullptr; }
    void cycle(platform::Timer *timer);

    /// In pixels; grows with the desktop's text size.
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
    /// Unused: starts and stops are not counted.
    std::int32_t mRefCount = 0;

    CameraTableModel *mModel;
    CameraTableAnnouncer *mAnnouncer;
    bool mAllowsEmptySelection = true;
    int mClickedRow = -1;
    int mPressedRow = -1;
    /// The widget that got the focus of the table when that was disabled.
    QPointer<QWidget> mFocusHeir;
    QString mPlaceholderText;
    Action mAction;
    Action mDoubleAction;
    std::shared_ptr<platform::RunLoop> mRunLoop;
};
