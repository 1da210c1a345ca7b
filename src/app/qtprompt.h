#pragma once
// The prompt service on screen: message boxes with the icon and buttons of the classic style codes,
// input boxes, file dialogs and the folder chooser.
#include "core/prompt.h"

#include <QMessageBox>

class QtPrompt : public Prompt {
public:
    int msgBox(const QString& text, int style, const QString& title) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& defaultText,
                     bool* cancelled) override;
    QString openFile(const QString& title, const QString& filter, const QString& folder) override;
    QString saveFile(const QString& title, const QString& filter, const QString& proposedName,
                     const QString& folder) override;
    QString chooseFolder(const QString& prompt) override;
    QString saveFileUnconfirmed(const QString& title, const QString& filter, const QString& proposedName,
                                const QString& folder) override;
};

namespace qtprompt {
QMessageBox::Icon iconOf(int style);
QMessageBox::StandardButtons buttonsOf(int style);
// The button that Enter presses: the first, second or third by the default-button code (256, 512).
QMessageBox::StandardButton defaultButtonOf(int style);
int resultOf(QMessageBox::StandardButton button);
// Filters may come in the classic "Text (*.a)|*.a|..." form; Qt wants "Text (*.a);;...".
QString dialogFilter(const QString& filter);
} // namespace qtprompt
