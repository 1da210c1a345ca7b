#pragma once
// Every message box, input box and file or folder dialog of the program goes through one prompt
// service, so that the exact texts can be tested and no code below the windows shows a dialog itself.
#include <QString>

namespace vb {
// Button and icon codes of a message box; callers add a button code and an icon code together.
enum MsgBoxStyle : int {
    OKOnly = 0,
    OKCancel = 1,
    AbortRetryIgnore = 2,
    YesNoCancel = 3,
    YesNo = 4,
    RetryCancel = 5,
    Critical = 16,
    Question = 32,
    Exclamation = 48,
    Information = 64,
};
// What a message box returns.
enum MsgBoxResult : int { OK = 1, Cancel = 2, Abort = 3, Retry = 4, Ignore = 5, Yes = 6, No = 7 };
} // namespace vb

class Prompt {
public:
    virtual ~Prompt() = default;
    // An empty title means the program's name, "VOSK".
    virtual int msgBox(const QString& text, int style = vb::OKOnly, const QString& title = QString()) = 0;
    // Returns the typed text; a cancelled box returns an empty text (and sets *cancelled when given).
    virtual QString inputBox(const QString& prompt, const QString& title = QString(),
                             const QString& defaultText = QString(), bool* cancelled = nullptr) = 0;
    // File and folder dialogs return an empty text when cancelled.
    virtual QString openFile(const QString& title, const QString& filter,
                             const QString& folder = QString()) = 0;
    virtual QString saveFile(const QString& title, const QString& filter, const QString& proposedName,
                             const QString& folder = QString()) = 0;
    virtual QString chooseFolder(const QString& prompt) = 0;
    // A save dialog that does not ask before replacing an existing file: the caller asks itself,
    // through msgBox, so that the question is one box that can be tested.
    virtual QString saveFileUnconfirmed(const QString& title, const QString& filter,
                                        const QString& proposedName, const QString& folder = QString()) {
        return saveFile(title, filter, proposedName, folder);
    }
};

// The program's prompt service. Until one is installed, a scripted one that answers OK is used, so that
// code run without windows never blocks.
Prompt& prompts();
// Installs the service; the caller keeps ownership. Returns the previous one.
Prompt* setPrompts(Prompt* service);

// Shorthand used all over the program, like the message box it replaces.
inline int MsgBox(const QString& text, int style = vb::OKOnly, const QString& title = QString()) {
    return prompts().msgBox(text, style, title);
}

inline const QString& appTitle() {
    static const QString title = QStringLiteral("VOSK");
    return title;
}
