#pragma once

class QString;
class QWidget;

/// Has a screen reader say the text, wherever the keyboard is. `source` is what the news is about. An empty
/// text says nothing.
void announce(QWidget *source, const QString &text);

/// Sets the accessible description if it differs: Qt would report an equal one as a change.
void describe(QWidget *widget, const QString &description);
