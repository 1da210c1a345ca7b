#include "core/prompt.h"
#include "core/scriptedprompt.h"

namespace {
Prompt*& current() {
    static Prompt* service = nullptr;
    return service;
}
} // namespace

Prompt& prompts() {
    if (!current()) {
        static ScriptedPrompt fallback;
        return fallback;
    }
    return *current();
}

Prompt* setPrompts(Prompt* service) {
    Prompt* previous = current();
    current() = service;
    return previous;
}

// A scripted prompt installs itself for its lifetime, which is what every test wants.
ScriptedPrompt::ScriptedPrompt() {
    m_previous = setPrompts(this);
}

ScriptedPrompt::~ScriptedPrompt() {
    if (current() == this)
        setPrompts(m_previous);
}

int ScriptedPrompt::msgBox(const QString& text, int style, const QString& title) {
    m_calls.append({Kind::MsgBox, text, title.isEmpty() ? appTitle() : title, style, {}});
    if (!m_buttons.isEmpty())
        return m_buttons.takeFirst();
    const int buttons = style & 7;
    if (buttons == vb::YesNo || buttons == vb::YesNoCancel)
        return vb::Yes;
    return vb::OK;
}

QString ScriptedPrompt::nextText(bool* cancelled) {
    const bool none = m_texts.isEmpty();
    if (cancelled)
        *cancelled = none;
    return none ? QString() : m_texts.takeFirst();
}

QString ScriptedPrompt::inputBox(const QString& prompt, const QString& title, const QString& defaultText,
                                 bool* cancelled) {
    m_calls.append({Kind::InputBox, prompt, title.isEmpty() ? appTitle() : title, 0, defaultText});
    return nextText(cancelled);
}

QString ScriptedPrompt::openFile(const QString& title, const QString& filter, const QString& folder) {
    m_calls.append({Kind::OpenFile, title, filter, 0, folder});
    return nextText(nullptr);
}

QString ScriptedPrompt::saveFile(const QString& title, const QString& filter, const QString& proposedName,
                                 const QString& folder) {
    m_calls.append({Kind::SaveFile, title, filter, 0, proposedName});
    return nextText(nullptr);
}

QString ScriptedPrompt::chooseFolder(const QString& prompt) {
    m_calls.append({Kind::ChooseFolder, prompt, {}, 0, {}});
    return nextText(nullptr);
}
