#include "cameras/KS7AnimatingStatusTableView.h"

#include "cameras/CamCell.h"
#include "cameras/CameraTableAccessible.h"
#include "cameras/CameraTableModel.h"
#include "pane/KS7SettingsWindowController.h"
#include "platform/desktop/RunLoop.h"

#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

const QString KS7AnimatingStatusTableView::CameraColumn = QStringLiteral("2");

namespace {

// Leaves room for the dot, whose lower edge is 30 below the row's upper one.
constexpr int RowHeight = 36;
constexpr int PlaceholderMargin = 12;

/// The theme's highlight, darkened until white text can be read on it.
QColor highlightUnderWhite()
{
    QColor color = QApplication::palette().color(QPalette::Active, QPalette::Highlight);
    while (qGray(color.rgb()) > 140)
        color = color.darker(115);
    return color;
}

bool isAnyStarting(const QHash<QString, std::shared_ptr<KS7Cam>> &cameras)
{
    return std::any_of(cameras.begin(), cameras.end(),
                       [](const auto &camera) { return camera && camera->status() == kKS7CamStarting; });
}

/// Stamps the table's one cell on each row.
class CamCellDelegate final : public QStyledItemDelegate {
public:
    CamCellDelegate(KS7AnimatingStatusTableView *table, std::unique_ptr<CamCell> cell)
        : QStyledItemDelegate(table)
        , mTable(table)
        , mCell(std::move(cell))
    {
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const bool isSelected = option.state.testFlag(QStyle::State_Selected);
        if (isSelected)
            painter->fillRect(option.rect, highlightUnderWhite());
        mCell->setHighlighted(isSelected);
        mCell->setEnabled(mTable->isEnabled());
        mCell->setObjectValue(index.data(CameraTableModel::RecordRole).value<std::shared_ptr<KS7Cam>>());
        mCell->drawWithFrame(painter, option.rect, mTable);
    }

    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &) const override
    {
        return {option.rect.width(), RowHeight};
    }

private:
    KS7AnimatingStatusTableView *mTable;
    std::unique_ptr<CamCell> mCell;
};

} // namespace

KS7AnimatingStatusTableView::KS7AnimatingStatusTableView(QWidget *parent)
    : QTableView(parent)
    , mModel(new CameraTableModel(this))
{
    // Before the model, whose arrival assistive programs already hear of.
    installCameraTableAccessibility();
    setModel(mModel);
    setSelectionMode(SingleSelection);
    setSelectionBehavior(SelectRows);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setAttribute(Qt::WA_InputMethodEnabled, false);
    setUpLooks();
}

KS7AnimatingStatusTableView::~KS7AnimatingStatusTableView() = default;

void KS7AnimatingStatusTableView::setUpLooks()
{
    horizontalHeader()->hide();
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    verticalHeader()->hide();
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setDefaultSectionSize(RowHeight);
    setShowGrid(false);
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // Names are black, so the ground is light in a dark theme too.
    QPalette light = palette();
    light.setColor(QPalette::Base, Qt::white);
    light.setColor(QPalette::Text, Qt::black);
    light.setColor(QPalette::Disabled, QPalette::Base, QColor(244, 244, 244));
    light.setColor(QPalette::Disabled, QPalette::Text, QColor(118, 118, 118));
    setPalette(light);
}

void KS7AnimatingStatusTableView::awakeFromNib(std::shared_ptr<platform::RunLoop> runLoop)
{
    mRunLoop = std::move(runLoop);
    mCycle = 0;
    mAnimationTimer.reset();
    mRefCount = 0;
    setFocus(Qt::OtherFocusReason);
}

// Rows --------------------------------------------------------------------------------------------------

void KS7AnimatingStatusTableView::reloadData()
{
    mModel->reload();
    // The selection of a row that went must not leave the keyboard's mark on its neighbour.
    if (selectedRow() < 0)
        selectionModel()->clearCurrentIndex();
    describeEmptiness();
    announceChangeOfSelectedRow();
}

void KS7AnimatingStatusTableView::display()
{
    executeDelayedItemsLayout();
    viewport()->repaint();
}

int KS7AnimatingStatusTableView::numberOfRows() const
{
    return mModel->rowCount();
}

int KS7AnimatingStatusTableView::selectedRow() const
{
    const auto selection = selectionModel()->selection();
    return selection.isEmpty() ? -1 : selection.first().top();
}

void KS7AnimatingStatusTableView::selectRow(int row)
{
    if (row < 0 || row >= numberOfRows())
        return;
    const bool isNew = row != selectedRow();
    const auto index = mModel->index(row, 0);
    selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    // Only a new choice comes into sight: a person who has scrolled elsewhere is left in peace by refreshes.
    if (isNew)
        scrollTo(index);
}

void KS7AnimatingStatusTableView::showEvent(QShowEvent *event)
{
    QTableView::showEvent(event);
    scrollTo(mModel->index(selectedRow(), 0));
}

void KS7AnimatingStatusTableView::deselectAll()
{
    selectionModel()->clear();
}

void KS7AnimatingStatusTableView::setDataCell(std::unique_ptr<CamCell> cell)
{
    auto *before = itemDelegate();
    setItemDelegate(new CamCellDelegate(this, std::move(cell)));
    delete before;
}

QString KS7AnimatingStatusTableView::textOfRow(int row) const
{
    return mModel->textOfRow(row);
}

std::shared_ptr<KS7Cam> KS7AnimatingStatusTableView::cameraInRow(int row) const
{
    return mModel->index(row, 0).data(CameraTableModel::RecordRole).value<std::shared_ptr<KS7Cam>>();
}

void KS7AnimatingStatusTableView::setPlaceholderText(const QString &text)
{
    mPlaceholderText = text;
    describeEmptiness();
    if (numberOfRows() == 0)
        viewport()->update();
}

void KS7AnimatingStatusTableView::describeEmptiness()
{
    const QString description = numberOfRows() == 0 ? mPlaceholderText : QString();
    // Each setting is news for assistive programs, also of the same words.
    if (description != accessibleDescription())
        setAccessibleDescription(description);
}

// Clicks and keys ---------------------------------------------------------------------------------------

int KS7AnimatingStatusTableView::rowOfClick(const QMouseEvent *event) const
{
    return event->button() == Qt::LeftButton && viewport()->rect().contains(event->pos())
        ? rowAt(event->pos().y())
        : -1;
}

void KS7AnimatingStatusTableView::mousePressEvent(QMouseEvent *event)
{
    mPressedRow = rowOfClick(event);
}

// Dragging over the table selects nothing.
void KS7AnimatingStatusTableView::mouseMoveEvent(QMouseEvent *)
{
}

void KS7AnimatingStatusTableView::mouseReleaseEvent(QMouseEvent *event)
{
    const int row = rowOfClick(event);
    if (std::exchange(mPressedRow, -1) == row)
        sendAction(row, mAction);
}

void KS7AnimatingStatusTableView::mouseDoubleClickEvent(QMouseEvent *event)
{
    mPressedRow = -1;
    sendAction(rowOfClick(event), mDoubleAction);
}

void KS7AnimatingStatusTableView::clickRow(int row)
{
    sendAction(row, mAction);
}

void KS7AnimatingStatusTableView::sendAction(int row, const Action &action)
{
    if (!isEnabled() || row < 0 || row >= numberOfRows())
        return;
    selectRow(row);
    const QScopedValueRollback<int> clicked(mClickedRow, row);
    if (action)
        action(this);
}

void KS7AnimatingStatusTableView::keyPressEvent(QKeyEvent *)
{
}

// Nothing that a person does to the view selects by itself: rows are selected where their action is sent.
QItemSelectionModel::SelectionFlags KS7AnimatingStatusTableView::selectionCommand(const QModelIndex &,
                                                                                  const QEvent *) const
{
    return QItemSelectionModel::NoUpdate;
}

// The base class counts hidden headers among the children that it tells of, so its events stay out.
void KS7AnimatingStatusTableView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
}

void KS7AnimatingStatusTableView::selectionChanged(const QItemSelection &selected,
                                                   const QItemSelection &deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected); // NOLINT(bugprone-parent-virtual-call)
    for (const auto &range : deselected)
        tellOfRow(range.top(), QAccessible::SelectionRemove);
    for (const auto &range : selected) {
        tellOfRow(range.top(), QAccessible::Selection);
        if (hasFocus())
            tellOfRow(range.top(), QAccessible::Focus);
    }
    rememberSelectedRow();
    if (settingsController)
        settingsController->tableViewSelectionDidChange({});
}

// Accessibility -----------------------------------------------------------------------------------------

void KS7AnimatingStatusTableView::tellOfRow(int row, int accessibleEvent)
{
    if (!QAccessible::isActive() || row < 0 || row >= numberOfRows())
        return;
    QAccessibleEvent event(this, static_cast<QAccessible::Event>(accessibleEvent));
    event.setChild(row);
    QAccessible::updateAccessibility(&event);
}

void KS7AnimatingStatusTableView::rememberSelectedRow()
{
    mSpokenRow = QAccessible::isActive() ? selectedRow() : -1;
    mSpokenText = mSpokenRow < 0 ? QString() : textOfRow(mSpokenRow);
}

void KS7AnimatingStatusTableView::announceChangeOfSelectedRow()
{
    const int row = std::exchange(mSpokenRow, -1);
    const QString text = std::exchange(mSpokenText, {});
    rememberSelectedRow();
    if (mSpokenRow >= 0 && mSpokenRow == row && mSpokenText != text)
        tellOfRow(row, QAccessible::NameChanged);
}

// Looks -------------------------------------------------------------------------------------------------

void KS7AnimatingStatusTableView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    if (numberOfRows() > 0)
        return;
    QPainter painter(viewport());
    painter.setPen(palette().color(QPalette::Disabled, QPalette::Text));
    const QRect room = viewport()->rect().adjusted(PlaceholderMargin, 0, -PlaceholderMargin, 0);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, mPlaceholderText);
}

QSize KS7AnimatingStatusTableView::sizeHint() const
{
    return {240, 5 * RowHeight};
}

QSize KS7AnimatingStatusTableView::minimumSizeHint() const
{
    return {160, 2 * RowHeight + 2 * frameWidth()};
}

// Animation ---------------------------------------------------------------------------------------------

void KS7AnimatingStatusTableView::startAnimatingStatus()
{
    if (mAnimationTimer || !mRunLoop)
        return;
    mCycle = 0;
    mAnimationTimer = mRunLoop->scheduledTimer(500ms, [this] { cycle(mAnimationTimer.get()); });
}

void KS7AnimatingStatusTableView::stopAnimatingStatus()
{
    mAnimationTimer.reset();
}

// A pairing camera starts the animation, yet only a starting one keeps it going.
void KS7AnimatingStatusTableView::cycle(platform::Timer *)
{
    mCycle = (mCycle + 1) % 2;
    display();
    if (!settingsController || !isAnyStarting(settingsController->cameras()))
        stopAnimatingStatus();
}
