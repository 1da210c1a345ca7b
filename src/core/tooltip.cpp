#include "core/tooltip.h"

#include "core/settings.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QToolTip>
#include <QWidget>

namespace {
const char* const PlainTipProperty = "voskTipText";
// The text a control was given, kept while tips are off so that switching them on shows it at once.
const char* const GivenTipProperty = "voskTipGiven";

// The tips come up at once when the pointer enters a control, not after the usual pause.
class ImmediateTips : public QObject {
public:
    using QObject::QObject;
    bool eventFilter(QObject* watched, QEvent* event) override {
        auto* w = qobject_cast<QWidget*>(watched);
        if (w && event->type() == QEvent::Enter && !w->toolTip().isEmpty())
            QToolTip::showText(QCursor::pos(), w->toolTip(), w, QRect(), w->toolTipDuration());
        return false;
    }
};

QString normalisedBreaks(QString text) {
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1String("\\n"), QLatin1String("\n"));
    return text;
}
} // namespace

void SetTip(QWidget* widget, const QString& text) {
    if (!widget)
        return;
    const QString plain = normalisedBreaks(text).trimmed();
    widget->setProperty(GivenTipProperty, plain.isEmpty() ? QVariant() : QVariant(plain));
    if (plain.isEmpty() || !opt::flag(opt::Tooltips)) {
        widget->setToolTip(QString());
        widget->setProperty(PlainTipProperty, QVariant());
        return;
    }
    QString html = plain.toHtmlEscaped();
    html.replace(QLatin1Char('\n'), QLatin1String("<br>"));
    // A rich-text tip in a fixed-width table is wrapped by Qt; a plain one would run off the screen.
    widget->setToolTip(QStringLiteral("<table width=\"240\"><tr><td>") + html +
                       QStringLiteral("</td></tr></table>"));
    widget->setToolTipDuration(20000);
    widget->setProperty(PlainTipProperty, plain);
    static ImmediateTips* filter = new ImmediateTips(qApp);
    widget->removeEventFilter(filter);
    widget->installEventFilter(filter);
}

QString TipText(const QWidget* widget) {
    return widget ? widget->property(PlainTipProperty).toString() : QString();
}

void RefreshTips() {
    for (QWidget* w : QApplication::allWidgets()) {
        const QVariant given = w->property(GivenTipProperty);
        if (given.isValid())
            SetTip(w, given.toString());
    }
}
