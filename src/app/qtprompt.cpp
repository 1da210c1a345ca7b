#include "app/qtprompt.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QList>

namespace qtprompt {

QMessageBox::Icon iconOf(int style) {
    switch (style & 0x70) {
    case vb::Critical:
        return QMessageBox::Critical;
    case vb::Question:
        return QMessageBox::Question;
    case vb::Exclamation:
        return QMessageBox::Warning;
    case vb::Information:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

namespace {
QList<QMessageBox::StandardButton> buttonList(int style) {
    switch (style & 7) {
    case vb::OKCancel:
        return {QMessageBox::Ok, QMessageBox::Cancel};
    case vb::AbortRetryIgnore:
        return {QMessageBox::Abort, QMessageBox::Retry, QMessageBox::Ignore};
    case vb::YesNoCancel:
        return {QMessageBox::Yes, QMessageBox::No, QMessageBox::Cancel};
    case vb::YesNo:
        return {QMessageBox::Yes, QMessageBox::No};
    case vb::RetryCancel:
        return {QMessageBox::Retry, QMessageBox::Cancel};
    default:
        return {QMessageBox::Ok};
    }
}
} // namespace

QMessageBox::StandardButtons buttonsOf(int style) {
    QMessageBox::StandardButtons result;
    for (auto b : buttonList(style))
        result |= b;
    return result;
}

QMessageBox::StandardButton defaultButtonOf(int style) {
    const auto list = buttonList(style);
    const int which = (style >> 8) & 3; // 0 first, 1 second, 2 third
    return list.at(std::min<int>(which, int(list.size()) - 1));
}

int resultOf(QMessageBox::StandardButton button) {
    switch (button) {
    case QMessageBox::Cancel:
        return vb::Cancel;
    case QMessageBox::Abort:
        return vb::Abort;
    case QMessageBox::Retry:
        return vb::Retry;
    case QMessageBox::Ignore:
        return vb::Ignore;
    case QMessageBox::Yes:
        return vb::Yes;
    case QMessageBox::No:
        return vb::No;
    default:
        return vb::OK;
    }
}

QString dialogFilter(const QString& filter) {
    if (!filter.contains(QLatin1Char('|')))
        return filter;
    const QStringList parts = filter.split(QLatin1Char('|'));
    QStringList out;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        const QString& caption = parts.at(i);
        QString patterns = parts.at(i + 1);
        patterns.replace(QLatin1Char(';'), QLatin1Char(' '));
        // The classic caption usually shows its patterns already; Qt reads them from the parentheses.
        out << (caption.contains(QLatin1Char('('))
                    ? caption
                    : caption + QStringLiteral(" (") + patterns + QLatin1Char(')'));
    }
    if (parts.size() % 2 == 1 && !parts.last().isEmpty())
        out << parts.last();
    return out.join(QStringLiteral(";;"));
}

} // namespace qtprompt

namespace {
QWidget* dialogParent() {
    if (QWidget* w = QApplication::activeModalWidget())
        return w;
    return QApplication::activeWindow();
}
QString titleOr(const QString& title) {
    return title.isEmpty() ? appTitle() : title;
}
} // namespace

int QtPrompt::msgBox(const QString& text, int style, const QString& title) {
    QMessageBox box(qtprompt::iconOf(style), titleOr(title), text, qtprompt::buttonsOf(style),
                    dialogParent());
    box.setDefaultButton(qtprompt::defaultButtonOf(style));
    box.exec();
    const auto clicked = box.standardButton(box.clickedButton());
    if (clicked == QMessageBox::NoButton) // closed with Escape or the title bar
        return (style & 7) == vb::YesNo ? vb::No : (style & 7) == vb::OKOnly ? vb::OK : vb::Cancel;
    return qtprompt::resultOf(clicked);
}

QString QtPrompt::inputBox(const QString& prompt, const QString& title, const QString& defaultText,
                           bool* cancelled) {
    bool ok = false;
    const QString text =
        QInputDialog::getText(dialogParent(), titleOr(title), prompt, QLineEdit::Normal, defaultText, &ok);
    if (cancelled)
        *cancelled = !ok;
    return ok ? text : QString();
}

QString QtPrompt::openFile(const QString& title, const QString& filter, const QString& folder) {
    return QFileDialog::getOpenFileName(dialogParent(), titleOr(title), folder,
                                        qtprompt::dialogFilter(filter));
}

QString QtPrompt::saveFile(const QString& title, const QString& filter, const QString& proposedName,
                           const QString& folder) {
    const QString start = folder.isEmpty() ? proposedName : folder + QLatin1Char('/') + proposedName;
    return QFileDialog::getSaveFileName(dialogParent(), titleOr(title), start,
                                        qtprompt::dialogFilter(filter));
}

QString QtPrompt::saveFileUnconfirmed(const QString& title, const QString& filter,
                                      const QString& proposedName, const QString& folder) {
    const QString start = folder.isEmpty() ? proposedName : folder + QLatin1Char('/') + proposedName;
    return QFileDialog::getSaveFileName(dialogParent(), titleOr(title), start, qtprompt::dialogFilter(filter),
                                        nullptr, QFileDialog::DontConfirmOverwrite);
}

QString QtPrompt::chooseFolder(const QString& prompt) {
    return QFileDialog::getExistingDirectory(dialogParent(), prompt);
}
