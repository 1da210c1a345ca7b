#pragma once
// What the editors' tests share: a grid filled by hand, the editor open in a view, and the steps a
// modal dialog should take once it shows.
#include "editors/gridmodel.h"

#include <QStringList>

// Header texts, then rows of cells; the entry row when adding is allowed.
inline void fillGrid(GridModel& g, const QStringList& headers, const QList<QStringList>& rows,
                     bool allowAdd = false) {
    g.setCols(int(headers.size()) + 1);
    g.setFormatString("|" + headers.join('|'));
    for (const QStringList& r : rows) {
        const int row = g.addRow();
        for (int c = 0; c < r.size(); ++c)
            g.setText(row, c + 1, r.at(c));
    }
    g.setAllowAdd(allowAdd);
}

#ifdef QT_WIDGETS_LIB
#include <QAbstractItemView>
#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>

// The editor of type E open in the view, if any.
template <typename E> E* openEditorIn(QAbstractItemView* view) {
    for (QWidget* w : view->viewport()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
        if (auto* e = qobject_cast<E*>(w); e && e->isVisible())
            return e;
    return nullptr;
}

// Runs what the modal dialog of type D should do once it shows; a dialog the steps left open (a
// failed check returns early) is cancelled, so that the test never waits on it.
template <typename D> void whenShown(std::function<void(D*)> act) {
    QTimer::singleShot(0, [act] {
        auto* d = qobject_cast<D*>(QApplication::activeModalWidget());
        if (!d) {
            if (auto* other = qobject_cast<QDialog*>(QApplication::activeModalWidget()))
                other->reject();
            QFAIL("the dialog did not show");
        }
        act(d);
        if (d->isVisible())
            d->reject();
    });
}
#endif
