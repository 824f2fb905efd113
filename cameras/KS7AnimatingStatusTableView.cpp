#include "cameras/KS7AnimatingStatusTableView.h"

#include "cameras/CamCell.h"
#include "cameras/CameraTableAccessible.h"
#include "cameras/CameraTableModel.h"
#include "cameras/CameraTableSource.h"
#include "platform/base/RunLoop.h"

#include <QAccessible>
#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QPainter>
#include <QScopedValueRollback>
#include <QStyledItemDelegate>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace std::chrono_literals;

const QString KS7AnimatingStatusTableView::CameraColumn = QStringLiteral("2");

namespace {

// The height of a row in pixels. The dot ends 30 pixels below the row's top; the rest is a margin.
constexpr int RowHeight = 36;
constexpr int PlaceholderMargin = 12;
// The theme's colour of a disabled text has too little contrast for a text that has to be read.
constexpr QColor PlaceholderColor{85, 85, 85};
constexpr int FocusWidth = 2;

constexpr double LeastContrast = 4.5;

/// Converts an sRGB channel to linear light, as the WCAG formula for relative luminance requires.
double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double contrastToWhite(const QColor &color)
{
    const double luminance =
        0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
    return 1.05 / (luminance + 0.05);
}

/// Returns the theme's highlight colour, darkened until white text on it has enough contrast.
QColor highlightUnderWhite()
{
    constexpr int SlightlyDarker = 104;
    QColor color = QApplication::palette().color(QPalette::Active, QPalette::Highlight);
    while (contrastToWhite(color) < LeastContrast)
        color = color.darker(SlightlyDarker);
    return color;
}

bool isAnyStarting(const QHash<QString, std::shared_ptr<KS7Cam>> &cameras)
{
    return std::any_of(cameras.begin(), cameras.end(),
                       [](const auto &camera) { return camera && camera->status() == kKS7CamStarting; });
}

/// Draws every row of the table with the same CamCell.
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
        return {option.rect.width(), mTable->scaledRowHeight()};
    }

private:
    KS7AnimatingStatusTableView *mTable;
    std::unique_ptr<CamCell> mCell;
};

} // namespace

KS7AnimatingStatusTableView::KS7AnimatingStatusTableView(QWidget *parent)
    : QTableView(parent)
    , mModel(new CameraTableModel(this))
    , mAnnouncer(new CameraTableAnnouncer(this))
{
    // Install the accessible classes before setModel(), which already sends accessibility events.
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
    verticalHeader()->setDefaultSectionSize(scaledRowHeight());
    setShowGrid(false);
    setWordWrap(false);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    // CamCell draws names in black, so keep a light background even in a dark theme.
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
    // When the selected row has been removed, Qt makes a neighbour the current row. Then clear the current
    // row too, because no row is selected any more.
    if (selectedRow() < 0)
        selectionModel()->clearCurrentIndex();
    mAnnouncer->selectionMayHaveChanged();
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
    // Scroll only to a newly selected row. Each refresh selects the same row again and must not undo the
    // user's scrolling.
    if (isNew)
        scrollTo(index);
}

void KS7AnimatingStatusTableView::showEvent(QShowEvent *event)
{
    QTableView::showEvent(event);
    scrollTo(mModel->index(selectedRow(), 0));
}

void KS7AnimatingStatusTableView::setUsable(bool usable)
{
    const bool isSwitchedOff = !usable && isEnabled();
    const bool hadFocus = window()->focusWidget() == this;
    setEnabled(usable);
    // Forget the widget that received the focus earlier: the user may have chosen it since.
    if (isSwitchedOff)
        mFocusHeir = hadFocus ? window()->focusWidget() : nullptr;
}

void KS7AnimatingStatusTableView::takeFocusBack()
{
    if (mFocusHeir && mFocusHeir == window()->focusWidget())
        setFocus(Qt::OtherFocusReason);
    mFocusHeir = nullptr;
}

void KS7AnimatingStatusTableView::deselectAll()
{
    if (mAllowsEmptySelection)
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
    if (std::exchange(mPlaceholderText, text) != text && numberOfRows() == 0)
        viewport()->update();
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

// Overridden so that dragging the mouse selects no rows.
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

// Mouse and keyboard must not change the selection through Qt. sendAction() selects the clicked row instead.
QItemSelectionModel::SelectionFlags KS7AnimatingStatusTableView::selectionCommand(const QModelIndex &,
                                                                                  const QEvent *) const
{
    return QItemSelectionModel::NoUpdate;
}

// Calls QAbstractItemView directly. QTableView::currentChanged() would send accessibility events for a wrong
// child, because it counts the hidden headers as children.
void KS7AnimatingStatusTableView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QAbstractItemView::currentChanged(current, previous); // NOLINT(bugprone-parent-virtual-call)
}

void KS7AnimatingStatusTableView::rowsInserted(const QModelIndex &parent, int first, int last)
{
    QTableView::rowsInserted(parent, first, last);
    for (int row = first; row <= last; ++row)
        mAnnouncer->tellOfRow(row, QAccessible::ObjectCreated);
}

void KS7AnimatingStatusTableView::rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    for (int row = first; row <= last; ++row)
        mAnnouncer->tellOfRow(row, QAccessible::ObjectDestroyed);
    QTableView::rowsAboutToBeRemoved(parent, first, last);
}

void KS7AnimatingStatusTableView::focusInEvent(QFocusEvent *event)
{
    QTableView::focusInEvent(event);
    mAnnouncer->keyboardHasCome();
}

void KS7AnimatingStatusTableView::selectionChanged(const QItemSelection &selected,
                                                   const QItemSelection &deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected); // NOLINT(bugprone-parent-virtual-call)
    mAnnouncer->selectionMayHaveChanged();
    if (settingsController)
        settingsController->tableViewSelectionDidChange({});
}

// Looks -------------------------------------------------------------------------------------------------

void KS7AnimatingStatusTableView::paintEvent(QPaintEvent *event)
{
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    if (hasFocus())
        paintFocus(painter);
    if (numberOfRows() > 0)
        return;
    painter.setPen(PlaceholderColor);
    const QRect room = viewport()->rect().adjusted(PlaceholderMargin, 0, -PlaceholderMargin, 0);
    painter.drawText(room, Qt::AlignCenter | Qt::TextWordWrap, mPlaceholderText);
}

void KS7AnimatingStatusTableView::paintFocus(QPainter &painter) const
{
    painter.setPen(QPen(highlightUnderWhite(), FocusWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
    painter.drawRect(viewport()->rect().adjusted(1, 1, -1, -1));
}

void KS7AnimatingStatusTableView::changeEvent(QEvent *event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        verticalHeader()->setDefaultSectionSize(scaledRowHeight());
}

int KS7AnimatingStatusTableView::scaledRowHeight() const
{
    return qRound(RowHeight * textScale(this));
}

QSize KS7AnimatingStatusTableView::sizeHint() const
{
    return {240, 5 * scaledRowHeight()};
}

QSize KS7AnimatingStatusTableView::minimumSizeHint() const
{
    return {160, 2 * scaledRowHeight() + 2 * frameWidth()};
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

// Drawing the row of a pairing or starting camera starts the animation. It continues only while a camera is
// starting. For a pairing camera it stops here, and the next drawing starts it again.
void KS7AnimatingStatusTableView::cycle(platform::Timer *)
{
    mCycle = (mCycle + 1) % 2;
    display();
    if (!settingsController || !isAnyStarting(settingsController->cameras()))
        stopAnimatingStatus();
}
