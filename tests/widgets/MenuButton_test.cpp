#include "widgets/MenuButton.h"

#include "tests/support/ActiveWindow.h"
#include "tests/support/Timeout.h"

#include <QMenu>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleFactory>
#include <QStyleOptionToolButton>
#include <QTest>
#include <QVBoxLayout>

namespace {

const QColor NormalColour = Qt::darkGreen;
const QColor DisabledColour = Qt::gray;
const QColor SelectedColour = Qt::magenta;

/// Draws the icon of a focused button in the colour of selected text. The Breeze style does the same.
class StyleLikeBreeze : public QProxyStyle {
public:
    StyleLikeBreeze()
        : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
    {
    }
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override
    {
        const auto *button = qstyleoption_cast<const QStyleOptionToolButton *>(option);
        if (element != CE_ToolButtonLabel || !button)
            return QProxyStyle::drawControl(element, option, painter, widget);
        const bool isSelected = button->state & State_HasFocus;
        button->icon.paint(painter, button->rect, Qt::AlignCenter,
                           isSelected ? QIcon::Selected : QIcon::Normal);
    }
};

QIcon iconOfModes()
{
    QIcon icon;
    for (const auto &[mode, colour] : {std::pair{QIcon::Normal, NormalColour},
                                       {QIcon::Disabled, DisabledColour},
                                       {QIcon::Selected, SelectedColour}}) {
        QPixmap pixmap(16, 16);
        pixmap.fill(colour);
        icon.addPixmap(pixmap, mode);
    }
    return icon;
}

} // namespace

/// Tests the button of the camera actions: the colour of its icon, and its hover state.
class MenuButtonTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void theIconHasItsNormalColour();
    void theIconKeepsItsColourWithTheFocus();
    void theIconOfADisabledButtonIsDisabled();
    void theHoverEndsWithTheMenu();
    void theHoverLastsWhileThePointerIsInTheButton();

private:
    void openAndCloseMenu(const QPoint &pointer);
    [[nodiscard]] QColor iconColour()
    {
        return mButton->grab().toImage().pixelColor(mButton->rect().center());
    }
    [[nodiscard]] QPoint outside() const { return mWindow->mapToGlobal(QPoint(100, 100)); }

    std::unique_ptr<QStyle> mStyle;
    std::unique_ptr<QWidget> mWindow;
    MenuButton *mButton = nullptr;
    QWidget *mNeighbour = nullptr;
};

void MenuButtonTest::init()
{
    mStyle = std::make_unique<StyleLikeBreeze>();
    mWindow = std::make_unique<QWidget>();
    mWindow->resize(200, 150);
    mButton = new MenuButton;
    mNeighbour = new QWidget;
    mNeighbour->setFocusPolicy(Qt::StrongFocus);
    auto *layout = new QVBoxLayout(mWindow.get());
    layout->addWidget(mButton);
    layout->addWidget(mNeighbour, 1);
    auto *menu = new QMenu(mButton);
    menu->addAction(QStringLiteral("Properties…"));
    mButton->setMenu(menu);
    mButton->setIcon(iconOfModes());
    mButton->setFocusPolicy(Qt::StrongFocus);
    mButton->setStyle(mStyle.get());
    mWindow->show();
    makeActive(mWindow.get());
    QVERIFY(QTest::qWaitForWindowExposed(mWindow.get(), Timeout));
    mNeighbour->setFocus();
}

void MenuButtonTest::cleanup()
{
    mWindow.reset();
    mStyle.reset();
}

void MenuButtonTest::openAndCloseMenu(const QPoint &pointer)
{
    QCursor::setPos(pointer);
    QTRY_COMPARE_WITH_TIMEOUT(QCursor::pos(), pointer, Timeout);
    mButton->menu()->popup(mWindow->mapToGlobal(QPoint(190, 140)));
    QTRY_VERIFY_WITH_TIMEOUT(mButton->menu()->isVisible(), Timeout);
    // Simulate a click whose leave event was lost because the menu opened. The button then still looks
    // hovered.
    mButton->setAttribute(Qt::WA_UnderMouse);
    mButton->menu()->hide();
    QCoreApplication::processEvents();
}

void MenuButtonTest::theIconHasItsNormalColour()
{
    QVERIFY(!mButton->hasFocus());
    QCOMPARE(iconColour(), NormalColour);
}

void MenuButtonTest::theIconKeepsItsColourWithTheFocus()
{
    mButton->setFocus();
    QTRY_VERIFY_WITH_TIMEOUT(mButton->hasFocus(), Timeout);
    QCOMPARE(iconColour(), NormalColour);
}

void MenuButtonTest::theIconOfADisabledButtonIsDisabled()
{
    mButton->setEnabled(false);
    QCOMPARE(iconColour(), DisabledColour);
}

void MenuButtonTest::theHoverEndsWithTheMenu()
{
    openAndCloseMenu(outside());
    QVERIFY(!mButton->underMouse());
}

void MenuButtonTest::theHoverLastsWhileThePointerIsInTheButton()
{
    openAndCloseMenu(mButton->mapToGlobal(mButton->rect().center()));
    QVERIFY(mButton->underMouse());
}

QTEST_MAIN(MenuButtonTest)
#include "MenuButton_test.moc"
