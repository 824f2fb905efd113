#pragma once

class QString;
class QWidget;

/// Makes screen readers say the text, regardless of the keyboard focus. `source` is the widget that the text
/// is about. An empty text is ignored.
void announce(QWidget *source, const QString &text);

/// Sets the accessible description only if it has changed, because Qt would report an equal one as a change.
void describe(QWidget *widget, const QString &description);

/// Whether screen readers say a new description of the widget by themselves: they do if the widget has the
/// focus. An announcement of the same text would repeat it.
[[nodiscard]] bool isDescriptionRead(const QWidget *widget);
