// The main window's stored settings: window place, category and filters, and the list's columns.
#include "app/frmmain_p.h"

#include "app/mainsettings.h"
#include "lists/listmodel.h"

#include <QComboBox>
#include <QHeaderView>

namespace {
constexpr int WidestDefaultColumn = 320;

// True when the saved order is a reordering of exactly n columns.
bool isPermutation(const QList<int>& order, int n) {
    if (order.size() != n)
        return false;
    QList<bool> seen(n, false);
    for (int v : order) {
        if (v < 0 || v >= n || seen[v])
            return false;
        seen[v] = true;
    }
    return true;
}
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
    if (d->listCategory.isEmpty() || n == 0)
        return;
    QHeaderView* header = lstItems->header();
    ColumnLayout layout;
    for (int c = 0; c < n; ++c) {
        layout.order << header->visualIndex(c);
        layout.widths << header->sectionSize(c);
    }
    layout.sortKey = d->model->isSorted() && d->model->sortKey() >= 0 ? d->model->sortKey() : -1;
    layout.sortOrder = d->model->sortOrder();
    SaveColumnLayout(d->listCategory, layout);
}

void frmMain::LoadColumnInfo() {
    const int n = d->model->columnCount();
    if (d->listCategory.isEmpty() || n == 0)
        return;
    const ColumnLayout layout = LoadColumnLayout(d->listCategory);
    if (layout.sortKey >= 0 && layout.sortKey < n) {
        if (!d->model->isSorted() || d->model->sortKey() != layout.sortKey ||
            d->model->sortOrder() != layout.sortOrder)
            d->model->setSort(layout.sortKey, layout.sortOrder);
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

    // The MOB and station lists always open with columns fitted to their contents.
    const bool restore = d->listCategory != listcat::MOBs && d->listCategory != listcat::Stations;
    if (restore && isPermutation(layout.order, n)) {
        for (int visual = 0; visual < n; ++visual) {
            const int logical = int(layout.order.indexOf(visual));
            header->moveSection(header->visualIndex(logical), visual);
        }
    }
    const bool widths = restore && layout.widths.size() == n;
    for (int c = 0; c < n; ++c) {
        if (widths && layout.widths.at(c) > 0) {
            header->resizeSection(c, layout.widths.at(c));
        } else {
            lstItems->resizeColumnToContents(c);
            if (header->sectionSize(c) > WidestDefaultColumn)
                header->resizeSection(c, WidestDefaultColumn);
        }
    }
}
