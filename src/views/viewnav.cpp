#include "views/viewnav.h"

#include "data/errorreport.h"
#include "views/buildtree.h"
#include "views/equiptypes.h"
#include "views/modmain.h"
#include "views/openviews.h"
#include "views/viewwidgets.h"

#include <QListWidget>
#include <QMenu>
#include <QTreeWidget>

QString BuildKindOfImage(int image) {
    switch (image) {
    case buildimg::Equipment:
        return QStringLiteral("Equipment");
    case buildimg::Component:
        return QStringLiteral("Components");
    case buildimg::RefinedRawMaterial:
    case buildimg::RawMaterial:
        return QStringLiteral("Raw Materials");
    default:
        return QString();
    }
}

void OpenEquipment(const QString& name) {
    const int type = FindType(name);
    ViewEquipDetails(name, type, DeEnumerate(type));
}

void OpenBuildNode(const QString& text, int image) {
    const QString name = RemoveExtra(text);
    switch (image) {
    case buildimg::Equipment:
        OpenEquipment(name);
        break;
    case buildimg::Component:
        ViewComponent(name);
        break;
    case buildimg::RefinedRawMaterial:
    case buildimg::RawMaterial:
        ViewRawMaterial(name);
        break;
    case buildimg::Item:
        ViewItem(name);
        break;
    default:
        break;
    }
}

void OpenBuildViewOfNode(const QString& text, int image) {
    const QString kind = BuildKindOfImage(image);
    if (!kind.isEmpty())
        ShowBuildView(RemoveExtra(text), kind);
}

namespace {
QString markerKind(const QString& key) {
    for (const QString& m : {marker::Equip, marker::Comp, marker::RawMat, marker::Item})
        if (key.contains(m))
            return m;
    return QString();
}
} // namespace

bool OpenByMarker(const QString& key, const QString& text) {
    const QString m = markerKind(key);
    const QString name = RemoveExtra(text);
    if (m == marker::Equip)
        OpenEquipment(name);
    else if (m == marker::Comp)
        ViewComponent(name);
    else if (m == marker::RawMat)
        ViewRawMaterial(name);
    else if (m == marker::Item)
        ViewItem(name);
    else
        return false;
    return true;
}

bool OpenBuildViewByMarker(const QString& key, const QString& text) {
    const QString m = markerKind(key);
    const QString name = RemoveExtra(text);
    if (m == marker::Equip)
        ShowBuildView(name, QStringLiteral("Equipment"));
    else if (m == marker::Comp)
        ShowBuildView(name, QStringLiteral("Components"));
    else if (m == marker::RawMat)
        ShowBuildView(name, QStringLiteral("Raw Materials"));
    else
        return false;
    return true;
}

void OpenRecord(const QString& kind, const QString& name) {
    if (name.isEmpty())
        return;
    if (kind == QLatin1String("Equipment"))
        OpenEquipment(name);
    else if (kind == QLatin1String("Component"))
        ViewComponent(name);
    else if (kind == QLatin1String("Raw Material"))
        ViewRawMaterial(name);
    else if (kind == QLatin1String("Item"))
        ViewItem(name);
    else if (kind == QLatin1String("Station"))
        ViewStation(name);
    else if (kind == QLatin1String("MOB"))
        ViewMOBInfo(name);
}

namespace {
template <typename F> void guarded(const QString& procedure, const QString& container, F&& f) {
    try {
        f();
    } catch (const VbError& e) {
        ReportDBError(e, procedure, container);
    } catch (const std::exception& e) {
        ReportDBError(e, procedure, container);
    }
}

void attachTree(QTreeWidget* tree, const QString& prefix, const QString& container, bool byMarker) {
    QObject::connect(tree, &QTreeWidget::itemDoubleClicked, tree, [=](QTreeWidgetItem* item, int) {
        guarded(prefix + "_DblClick", container, [&] {
            if (byMarker)
                OpenByMarker(NodeKey(item), item->text(0));
            else
                OpenBuildNode(item->text(0), NodeImage(item));
        });
    });
    QObject::connect(tree, &QWidget::customContextMenuRequested, tree, [=](const QPoint& pos) {
        QTreeWidgetItem* item = tree->itemAt(pos);
        if (!item)
            return;
        tree->setCurrentItem(item);
        const QString key = NodeKey(item), text = item->text(0);
        const int image = NodeImage(item);
        const bool canOpen = byMarker ? !markerKind(key).isEmpty() : image != 0;
        const bool canBuild = byMarker ? (!markerKind(key).isEmpty() && markerKind(key) != marker::Item)
                                       : !BuildKindOfImage(image).isEmpty();
        if (!canOpen)
            return;
        QMenu menu(tree);
        menu.setObjectName(QStringLiteral("mnuPopup"));
        QAction* detailed = menu.addAction(QStringLiteral("Detailed View"));
        detailed->setObjectName(QStringLiteral("mnuPopupDetailedview"));
        QAction* build = menu.addAction(QStringLiteral("Build View"));
        build->setObjectName(QStringLiteral("mnuPopupBuildview"));
        build->setEnabled(canBuild);
        QAction* chosen = menu.exec(tree->viewport()->mapToGlobal(pos));
        if (chosen == detailed)
            guarded("mnuPopupDetailedview_Click", container,
                    [&] { byMarker ? void(OpenByMarker(key, text)) : OpenBuildNode(text, image); });
        else if (chosen == build)
            guarded("mnuPopupBuildview_Click", container, [&] {
                byMarker ? void(OpenBuildViewByMarker(key, text)) : OpenBuildViewOfNode(text, image);
            });
    });
}
} // namespace

void AttachBuildTreeCommands(QTreeWidget* tree, const QString& procedurePrefix, const QString& container) {
    attachTree(tree, procedurePrefix, container, false);
}

void AttachMarkerTreeCommands(QTreeWidget* tree, const QString& procedurePrefix, const QString& container) {
    attachTree(tree, procedurePrefix, container, true);
}

void AttachListOpener(QListWidget* list, const QString& kind, const QString& procedure,
                      const QString& container) {
    QObject::connect(list, &QListWidget::itemDoubleClicked, list, [=](QListWidgetItem* item) {
        if (!item || IsPlaceholder(item))
            return;
        guarded(procedure, container, [&] { OpenRecord(kind, item->text()); });
    });
}
