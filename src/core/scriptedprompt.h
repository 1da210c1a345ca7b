#pragma once
// The prompt service used by tests: it records every prompt and plays back queued answers.
#include "core/prompt.h"

#include <QList>
#include <QStringList>

class ScriptedPrompt : public Prompt {
public:
    enum class Kind { MsgBox, InputBox, OpenFile, SaveFile, ChooseFolder };
    struct Call {
        Kind kind;
        QString text;  // message, prompt or dialog title
        QString title; // box title as shown (the default title filled in); filter for file dialogs
        int style = 0;
        QString extra; // input default text or proposed file name
    };

    ScriptedPrompt();
    ~ScriptedPrompt() override;

    // Answers are taken in order; a message box with no queued answer returns OK (or Yes for Yes/No
    // boxes), a text prompt with no queued answer returns an empty text (a cancel).
    void queueButton(int result) { m_buttons.append(result); }
    void queueText(const QString& text) { m_texts.append(text); }

    const QList<Call>& calls() const { return m_calls; }
    Call last() const { return m_calls.isEmpty() ? Call{} : m_calls.last(); }
    int count() const { return int(m_calls.size()); }
    void clear() {
        m_calls.clear();
        m_buttons.clear();
        m_texts.clear();
    }

    int msgBox(const QString& text, int style, const QString& title) override;
    QString inputBox(const QString& prompt, const QString& title, const QString& defaultText,
                     bool* cancelled) override;
    QString openFile(const QString& title, const QString& filter, const QString& folder) override;
    QString saveFile(const QString& title, const QString& filter, const QString& proposedName,
                     const QString& folder) override;
    QString chooseFolder(const QString& prompt) override;

private:
    QString nextText(bool* cancelled);
    QList<Call> m_calls;
    QList<int> m_buttons;
    QStringList m_texts;
    Prompt* m_previous = nullptr;
};
