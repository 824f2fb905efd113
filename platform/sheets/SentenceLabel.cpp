#include "platform/sheets/SentenceLabel.h"

#include <QLabel>
#include <QLayout>
#include <QScreen>

#include <algorithm>

namespace platform {
namespace {

/// The length of the longest readable line, in characters of average width.
constexpr int LongestLine = 68;

} // namespace

int roomOver(const QWidget *window)
{
    return std::min(window->width(), window->screen()->availableSize().width());
}

void fitSentence(QLabel *label, const QWidget *window)
{
    label->setMinimumWidth(0);
    label->setWordWrap(false);
    const int unwrapped = label->sizeHint().width();
    label->setWordWrap(true);
    const int longestWord = label->minimumSizeHint().width();
    const int wanted = std::min(unwrapped, label->fontMetrics().averageCharWidth() * LongestLine);
    label->setMinimumWidth(wanted);
    const int excess = label->window()->layout()->totalMinimumSize().width() - roomOver(window);
    if (excess > 0)
        label->setMinimumWidth(std::max(wanted - excess, longestWord));
}

} // namespace platform
