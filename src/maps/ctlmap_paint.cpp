// Drawing the map: space, the grid, the markers (most important on top), the names, the selection and
// the point under the pointer, a location being placed, the grid's labels and the scale bar.
#include "maps/clsdc.h"
#include "maps/ctlmap.h"
#include "maps/maplabels.h"

#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>
#include <numeric>

namespace {
constexpr double kLabelPadX = 8;
constexpr double kLabelPadY = 2;
} // namespace

QList<QRectF> ctlMap::placeNames(double scale, int marker) const {
    const double h = QFontMetricsF(font()).height() + kLabelPadY;
    QList<LabelRequest> requests;
    requests.reserve(m_points.size());
    for (int i = 0; i < m_points.size(); ++i) {
        const NavPoint& p = m_points.at(i);
        LabelRequest r;
        r.anchor = QPointF(p.x * scale, -p.y * scale);
        r.radius = marker / 2.0;
        r.size = QSizeF(m_textWidths.at(i) + kLabelPadX, h);
        r.priority = LabelPriority(p.kind);
        requests.append(r);
    }
    return PlaceLabels(requests);
}

void ctlMap::ensureLabels() {
    const int marker = markerSize();
    if (m_labelScale == m_view.scale() && m_labelMarker == marker && m_labels.size() == m_points.size())
        return;
    m_labels = placeNames(m_view.scale(), marker);
    m_labelScale = m_view.scale();
    m_labelMarker = marker;
}

QRectF ctlMap::labelBox(int index) {
    ensureLabels();
    if (index < 0 || index >= m_labels.size() || m_labels.at(index).isNull())
        return QRectF();
    return m_labels.at(index).translated(m_view.toScreen(QPointF(0, 0)));
}

void ctlMap::paintLabels(clsDC& dc, const QRectF& visible) {
    ensureLabels();
    const QPointF origin = m_view.toScreen(QPointF(0, 0));
    QPainter& p = dc.painter();
    p.setFont(font());
    for (int i = 0; i < m_labels.size(); ++i) {
        const QRectF& box = m_labels.at(i);
        if (box.isNull() || i == m_selected || i == m_hover)
            continue;
        const QRectF at = box.translated(origin);
        if (!at.intersects(visible))
            continue;
        QStaticText& text = m_texts[i];
        if (text.text().isEmpty()) {
            text.setText(m_points.at(i).name);
            text.setTextFormat(Qt::PlainText);
            text.setPerformanceHint(QStaticText::AggressiveCaching);
            text.prepare(QTransform(), font());
        }
        dc.drawLabel(at, QString(), &text, false);
    }
}

void ctlMap::paintEvent(QPaintEvent* event) {
    QPainter p(viewport());
    // The painter's device, not the widget: a picture rendered for print or at another density.
    clsDC dc(p, p.device()->devicePixelRatioF());
    const QRectF all(QPointF(0, 0), m_view.viewport());
    dc.fillBackground(all);
    const Grid grid = MakeGrid(m_view);
    dc.drawGrid(grid, m_view);

    const int marker = markerSize();
    const QRectF reach = all.adjusted(-marker, -marker, marker, marker);
    for (int i : m_drawOrder) {
        const NavPoint& pt = m_points.at(i);
        const QPointF s = m_view.toScreen(QPointF(pt.x, pt.y));
        if (reach.contains(s))
            dc.drawMarker(pt.kind, s, marker);
    }

    paintLabels(dc, all);

    // The selection and the point under the pointer: a ring, and the name even where it had no room.
    p.setFont(font());
    for (int i : {m_hover, m_selected}) {
        if (i < 0 || i >= m_points.size())
            continue;
        const NavPoint& pt = m_points.at(i);
        const QPointF s = m_view.toScreen(QPointF(pt.x, pt.y));
        dc.drawRing(s, marker / 2.0 + 4, i == m_selected);
        QRectF box = labelBox(i);
        if (box.isNull()) {
            LabelRequest r;
            r.anchor = s;
            r.radius = marker / 2.0;
            r.size = QSizeF(m_textWidths.at(i) + kLabelPadX, QFontMetricsF(font()).height() + kLabelPadY);
            box = LabelCandidates(r).first();
        }
        dc.drawLabel(box, pt.name, nullptr, i == m_selected);
    }

    if (m_ghost)
        dc.drawGhost(m_ghostKind, m_view.toScreen(*m_ghost), std::max(marker, 20));

    QFont small = font();
    small.setPointSizeF(std::max(7.0, font().pointSizeF() - 1));
    dc.drawGridLabels(grid, m_view, small);
    dc.drawScaleBar(m_view, small);
    if (m_points.isEmpty() && !m_sector.isEmpty())
        dc.drawNotice(
            all.adjusted(40, 40, -40, -40),
            QStringLiteral("No locations have been charted in %1 yet.\nRight-click the map to add one.")
                .arg(m_sector),
            font());
    // From the first picture on, the view is the player's: a pending fit or centring is done.
    m_pendingFit = false;
    m_pendingCentre.clear();
    Q_UNUSED(event);
}
