#pragma once
// The program's tooltips: texts from "VOSK.ini" shown only while the option "Tooltips" is on,
// wrapped at 240 pixels, up at once when the pointer enters the control and kept for 20 seconds.
#include <QString>

class QWidget;

// A text with line breaks (CR LF, LF or the file's written "\n") shows them as breaks. An empty text,
// or tooltips switched off, leaves the control without a tip.
void SetTip(QWidget* widget, const QString& text);
// Shows or hides the tips of every open control after the option "Tooltips" has changed.
void RefreshTips();
// The text given to SetTip, as the user reads it (empty when the control has no tip).
QString TipText(const QWidget* widget);
