// The main window's list: refreshing it from the category's statement, ticking rows and opening them.
#include "app/frmmain_p.h"

#include "app/mainsettings.h"
#include "core/inifile.h"
#include "core/prompt.h"
#include "core/settings.h"
#include "data/database.h"
#include "data/errorreport.h"
#include "data/quotes.h"
#include "data/recordset.h"
#include "lists/listmodel.h"
#include "views/equiptypes.h"
#include "views/modmain.h"
#include "views/openviews.h"

#include <QElapsedTimer>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>

namespace {
const QString Container = QStringLiteral("Form frmMain");
} // namespace

void frmMain::RefreshGrid() {
    const QString cat = category();
    const QString layoutKey = ColumnLayoutKey(cat, currentFilters().equipType);
    // Work waiting for the rows of the list being replaced is not for this one.
    d->afterLoad.clear();
    try {
        const QModelIndex current = lstItems->currentIndex();
        if (current.isValid())
            d->rememberedRow = current.row();
        showStatus(QStringLiteral("Refreshing Grid"));
        d->loadClock.start();
        // The layout of the list as the user left it belongs to the list it was made for.
        if (!d->listLayout.isEmpty() && d->model->columnCount() > 0)
            SaveColumnInfo();

        const QString sql = ListStatement(cat, currentFilters());
        auto rs = std::make_unique<Recordset>();
        // Another list's rows must not be sorted by this one's column first; its own saved sort
        // is applied once its columns are known.
        if (layoutKey != d->listLayout)
            d->model->setSort(-1, ListModel::Ascending);
        d->model->clear();
        d->listCategory.clear();
        d->listLayout.clear();
        rs->open(sql);
        const QScopedValueRollback<bool> inRefresh(d->refreshing, true);
        // The first rows are in when this returns; a long list reads the rest from the event loop,
        // the window painting and answering in between.
        SetRStoList(std::move(rs));
        d->listCategory = cat;
        d->listLayout = layoutKey;
        LoadColumnInfo();
        d->refreshing = false;
        const int row = d->rememberedRow;
        if (row >= 0 && row < d->model->rowCount()) {
            const QModelIndex index = d->model->index(row, 0);
            lstItems->setCurrentIndex(index);
            lstItems->scrollTo(index, QAbstractItemView::PositionAtCenter);
        }
        if (d->model->isLoading()) {
            lstItems->viewport()->setCursor(Qt::BusyCursor);
            showLoadProgress();
        } else {
            listLoaded();
        }
    } catch (const VbError& e) {
        setPanelText(QStringLiteral("Status"), QStringLiteral("Ready"));
        setPanelText(QStringLiteral("ItemCount"),
                     QStringLiteral("Items: ") + QString::number(d->model->rowCount()));
        ReportDBError(e, QStringLiteral("RefreshGrid"), Container);
        updateMenuState();
    } catch (const std::exception& e) {
        setPanelText(QStringLiteral("Status"), QStringLiteral("Ready"));
        ReportDBError(e, QStringLiteral("RefreshGrid"), Container);
        updateMenuState();
    }
}

void frmMain::showLoadProgress() {
    // The rows read so far, and how long it has taken: the list grows under the user's eyes.
    setPanelText(QStringLiteral("ItemCount"),
                 QStringLiteral("Items: ") + QString::number(d->model->rowCount()));
    setPanelText(QStringLiteral("LoadTime"),
                 QString::number(d->loadClock.nsecsElapsed() / 1e9, 'f', 2) + QStringLiteral(" Seconds"));
}

void frmMain::listLoaded() {
    lstItems->viewport()->unsetCursor();
    setPanelText(QStringLiteral("ItemCount"),
                 QStringLiteral("Items: ") + QString::number(d->model->rowCount()));
    setPanelText(QStringLiteral("Status"), QStringLiteral("Ready"));
    // A remembered row beyond the first rows read is reached only now.
    const int row = d->rememberedRow;
    if (!lstItems->currentIndex().isValid() && row >= 0 && row < d->model->rowCount()) {
        const QModelIndex index = d->model->index(row, 0);
        lstItems->setCurrentIndex(index);
        lstItems->scrollTo(index, QAbstractItemView::PositionAtCenter);
    }
    setPanelText(QStringLiteral("LoadTime"),
                 QString::number(d->loadClock.nsecsElapsed() / 1e9, 'f', 2) + QStringLiteral(" Seconds"));
    updateMenuState();
    const ListModel::LoadError error = d->model->loadError();
    if (error.number != 0)
        ReportDBError(VbError(error.number, error.description), QStringLiteral("RefreshGrid"), Container);
    const auto work = std::exchange(d->afterLoad, {});
    for (const auto& w : work)
        w();
}

void frmMain::whenListLoaded(std::function<void()> work) {
    if (d->model->isLoading())
        d->afterLoad.push_back(std::move(work));
    else
        work();
}

void frmMain::SetRStoList(std::unique_ptr<Recordset> rs) {
    ListColors colors;
    colors.updated = colorFromVbColorText(ReadVoskIni(QStringLiteral("COLORS"), QStringLiteral("UPDATED")));
    colors.personal = colorFromVbColorText(ReadVoskIni(QStringLiteral("COLORS"), QStringLiteral("PERSONAL")));
    d->model->startLoad(std::move(rs), colors);
    // A list whose rows carry no change flags has no coloured rows to explain.
    showLegend(d->model->hasColourFlags() ? colors.updated : QColor(),
               d->model->hasColourFlags() ? colors.personal : QColor());
    // A custom field without a caption is not in use: its column stays out of sight.
    const CustomFields& custom = customFields();
    for (int c = 0; c < d->model->columnCount(); ++c) {
        const QString column = d->model->columnName(c);
        d->model->setHeaderText(c, FormatFieldName(column));
        bool unused = false;
        for (int k = 0; k < 3; ++k)
            if (column == QStringLiteral("CUSTOM_0%1").arg(k + 1))
                unused = custom.caption[k].trimmed().isEmpty();
        lstItems->setColumnHidden(c, unused);
    }
}

void frmMain::lstItems_ItemCheck(int row, const QString& name, bool checked) {
    const QString sql = CheckStatement(category(), name, checked);
    if (sql.isEmpty()) {
        d->model->setChecked(row, !checked);
        return;
    }
    try {
        // A name holding two quotes in a row (possible only in a file made before the database
        // refused such names) would end its literal early and tick other rows.
        if (!ValidName(name))
            throw VbError(vberr::InvalidCall,
                          QStringLiteral("The tick was not stored: the name \"%1\" holds two single quotes "
                                         "in a row.")
                              .arg(name));
        // A row that no longer matches its record (deleted or renamed elsewhere, or a name the
        // database cannot compare) stores nothing: that is a failed tick, not a silent one.
        if (db().execute(sql) == 0)
            throw VbError(
                vberr::NoCurrentRecord,
                QStringLiteral("The tick was not stored: no record named \"%1\" was found.").arg(name));
    } catch (const VbError& e) {
        // The box goes back so that the list never shows a tick the database does not hold.
        d->model->setChecked(row, !checked);
        ReportDBError(e, QStringLiteral("lstItems_ItemCheck"), Container);
    }
}

void frmMain::lstItems_DblClick() {
    // Option 1 asks for the editor; while no editor is installed the view opens instead, so that a
    // double click shows the record either way.
    openRecord(opt::number(opt::DoubleClickEvent) == 1 && CanEdit(category()));
}

void frmMain::mnuPopupView_Click() {
    openRecord(false);
}

void frmMain::mnuEditEditItem_Click() {
    openRecord(CanEdit(category()));
}

void frmMain::openRecord(bool editor) {
    const QString name = selectedName();
    if (name.isEmpty())
        return;
    const QString cat = category();
    try {
        if (editor) {
            editorOpener()(cat, name);
        } else if (cat == listcat::Equipment) {
            const int type = FindType(name);
            ViewEquipDetails(name, type, DeEnumerate(type));
        } else if (cat == listcat::Components) {
            ViewComponent(name);
        } else if (cat == listcat::RawMaterials) {
            ViewRawMaterial(name);
        } else if (cat == listcat::Stations) {
            ViewStation(name);
        } else if (cat == listcat::MOBs) {
            ViewMOBInfo(name);
        } else if (cat == listcat::Items) {
            ViewItem(name);
        }
    } catch (const VbError& e) {
        ReportDBError(e,
                      editor ? QStringLiteral("mnuEditEditItem_Click") : QStringLiteral("lstItems_DblClick"),
                      Container);
    }
}

void frmMain::mnuViewBuidView_Click() {
    const QString name = selectedName();
    const QString cat = category();
    if (name.isEmpty() ||
        !(cat == listcat::Equipment || cat == listcat::Components || cat == listcat::RawMaterials))
        return;
    try {
        ShowBuildView(name, cat);
    } catch (const VbError& e) {
        ReportDBError(e, QStringLiteral("mnuViewBuidView_Click"), Container);
    }
}
