// The main window's stored settings: window place, category and filters, and the list's columns.
#include "app/frmmain_p.h"

#include "app/mainsettings.h"
#include "lists/listmodel.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLayout>
#include <QScreen>
#include <QStyle>

namespace {
constexpr int WidestDefaultColumn = 320;
} // namespace

void frmMain::SaveSettings() {
    MainWindowPlace place;
    place.windowState = isMinimized() ? 1 : isMaximized() ? 2 : 0;
    place.geometry = saveGeometry();
    SaveWindowPlace(place);
    SaveCategory(category());
    ListFilters f;
    f.equipType = cmbEquipType->currentText();
    f.level = cmbLevel->currentText();
    f.checked = cmbChecked->currentText();
    f.compType = cmbCompType->currentText();
    f.subType = cmbSubType->currentText();
    f.combatBand = cmbCL->currentText();
    f.race = cmbRace->currentText();
    SaveFilters(f);
}

void frmMain::LoadSettings() {
    SuspendRefresh hold(d->suspend);
    const MainWindowPlace place = LoadWindowPlace();
    if (!place.geometry.isEmpty())
        restoreGeometry(place.geometry);
    // A window left minimised comes back in its normal size: starting as an icon helps nobody.
    if (place.windowState == 2)
        setWindowState(windowState() | Qt::WindowMaximized);

    chooseEntry(cmbData, LoadCategory());
    const ListFilters f = LoadFilters();
    chooseEntry(cmbEquipType, f.equipType);
    chooseEntry(cmbLevel, f.level);
    chooseEntry(cmbChecked, f.checked);
    chooseEntry(cmbCompType, f.compType);
    chooseEntry(cmbCL, f.combatBand);
    chooseEntry(cmbRace, f.race);
    fillSubTypes();
    chooseEntry(cmbSubType, f.subType);
    showFiltersFor(category());
}

void frmMain::SaveColumnInfo() {
    const int n = d->model->columnCount();
    if (d->listLayout.isEmpty() || n == 0)
        return;
    QHeaderView* header = lstItems->header();
    ColumnLayout layout;
    for (int visual = 0; visual < n; ++visual) {
        const int c = header->logicalIndex(visual);
        if (header->isSectionHidden(c))
            continue;
        layout.order << d->model->columnName(c);
        layout.widths << header->sectionSize(c);
    }
    if (d->model->isSorted() && d->model->sortKey() >= 0) {
        layout.sortKey = d->model->sortKey();
        layout.sortColumn = d->model->columnName(layout.sortKey);
    }
    layout.sortOrder = d->model->sortOrder();
    SaveColumnLayout(d->listLayout, layout);
}

void frmMain::LoadColumnInfo() {
    const int n = d->model->columnCount();
    if (d->listLayout.isEmpty() || n == 0)
        return;
    // A type chosen for the first time starts from the layout of its category's whole list.
    ColumnLayout layout = LoadColumnLayout(d->listLayout);
    if (layout.isEmpty() && d->listLayout != d->listCategory)
        layout = LoadColumnLayout(d->listCategory);

    int key = layout.sortColumn.isEmpty() ? layout.sortKey : d->model->columnIndex(layout.sortColumn);
    if (key >= n)
        key = -1;
    if (key >= 0) {
        if (!d->model->isSorted() || d->model->sortKey() != key || d->model->sortOrder() != layout.sortOrder)
            d->model->setSort(key, layout.sortOrder);
    } else if (d->model->isSorted() && d->model->sortKey() >= 0) {
        d->model->setSort(-1, ListModel::Ascending);
    }
    QHeaderView* header = lstItems->header();
    const bool sorted = d->model->isSorted() && d->model->sortKey() >= 0;
    if (sorted)
        header->setSortIndicator(d->model->sortKey(), d->model->sortOrder() == ListModel::Ascending
                                                          ? Qt::AscendingOrder
                                                          : Qt::DescendingOrder);
    header->setSortIndicatorShown(sorted);

    // The MOB and station lists open with their columns fitted to their contents.
    const bool restore = d->listCategory != listcat::MOBs && d->listCategory != listcat::Stations;
    if (restore) {
        QStringList columns;
        for (int c = 0; c < n; ++c)
            columns << d->model->columnName(c);
        const QList<int> order = VisualOrder(columns, layout.order);
        for (int visual = 0; visual < n; ++visual)
            header->moveSection(header->visualIndex(order.at(visual)), visual);
    }
    for (int c = 0; c < n; ++c) {
        const int width = restore ? layout.width(d->model->columnName(c)) : 0;
        if (width > 0) {
            header->resizeSection(c, width);
        } else {
            lstItems->resizeColumnToContents(c);
            if (header->sectionSize(c) > WidestDefaultColumn)
                header->resizeSection(c, WidestDefaultColumn);
        }
    }
}

// The first start: the window as wide as its columns need, within the screen; when the screen is
// narrower, the widest columns give way until every column is in sight.
void frmMain::fitWindowToColumns() {
    QHeaderView* header = lstItems->header();
    QList<int> widths;
    for (int c = 0; c < header->count(); ++c)
        if (!header->isSectionHidden(c))
            widths << header->sectionSize(c);
    if (widths.isEmpty())
        return;
    const QRect screenArea = screen() ? screen()->availableGeometry() : QRect(0, 0, 1280, 1024);
    // Everything around the columns: the layout's margins, the list's frame and its scroll bar.
    const QMargins margins = centralWidget()->layout()->contentsMargins();
    const int chrome = margins.left() + margins.right() + 2 * lstItems->frameWidth() +
                       style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, lstItems) + 2;
    // A little room is left for the window's own frame.
    const int budget = qMax(200, screenArea.width() - 24 - chrome);
    const QList<int> fitted = FitWidths(widths, budget);
    for (int c = 0, i = 0; c < header->count(); ++c)
        if (!header->isSectionHidden(c))
            header->resizeSection(c, fitted.at(i++));
    int total = chrome;
    for (int w : fitted)
        total += w;
    const int wide = qMin(qMax(total, minimumSizeHint().width()), screenArea.width() - 24);
    const int high = qMin(height(), screenArea.height() - 48);
    resize(wide, high);
    move(screenArea.center() - QPoint(wide / 2, high / 2));
}
