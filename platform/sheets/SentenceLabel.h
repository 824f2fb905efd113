#pragma once

class QLabel;
class QWidget;

namespace platform {

/// The width in pixels that a dialog over `window` may have: that of the window or of its screen.
int roomOver(const QWidget *window);

/// Wraps the label's text. Makes the label as wide as its text, but no wider than a readable line. Then
/// narrows the label until its dialog is no wider than `window` and its screen.
void fitSentence(QLabel *label, const QWidget *window);

} // namespace platform
