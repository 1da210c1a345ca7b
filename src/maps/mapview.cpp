#include "maps/mapview.h"

#include <algorithm>
#include <cmath>
#include <limits>

QPointF MapView::toScreen(QPointF world) const {
    return {m_viewport.width() / 2 + (world.x() - m_centre.x()) * m_scale,
            m_viewport.height() / 2 - (world.y() - m_centre.y()) * m_scale};
}

QPointF MapView::toWorld(QPointF screen) const {
    return {m_centre.x() + (screen.x() - m_viewport.width() / 2) / m_scale,
            m_centre.y() - (screen.y() - m_viewport.height() / 2) / m_scale};
}

QRectF MapView::toScreen(const QRectF& world) const {
    return QRectF(toScreen(world.topLeft()), toScreen(world.bottomRight())).normalized();
}

QRectF MapView::visibleWorld() const {
    return QRectF(toWorld({0, 0}), toWorld({m_viewport.width(), m_viewport.height()})).normalized();
}

void MapView::setViewport(QSizeF size) {
    m_viewport = QSizeF(std::max(1.0, size.width()), std::max(1.0, size.height()));
}

double MapView::setScale(double pixelsPerUnit) {
    if (std::isfinite(pixelsPerUnit) && pixelsPerUnit > 0)
        m_scale = std::clamp(pixelsPerUnit, m_min, m_max);
    return m_scale;
}

void MapView::setScaleLimits(double minimum, double maximum) {
    m_min = std::max(minimum, 1e-12);
    m_max = std::max(maximum, m_min);
    m_scale = std::clamp(m_scale, m_min, m_max);
}

bool MapView::zoomAt(QPointF screen, double factor) {
    const QPointF anchor = toWorld(screen);
    const double before = m_scale;
    setScale(m_scale * factor);
    if (m_scale == before)
        return false;
    m_centre = QPointF(anchor.x() - (screen.x() - m_viewport.width() / 2) / m_scale,
                       anchor.y() + (screen.y() - m_viewport.height() / 2) / m_scale);
    return true;
}

void MapView::panBy(QPointF screenDelta) {
    m_centre += QPointF(-screenDelta.x() / m_scale, screenDelta.y() / m_scale);
}

namespace {
QRectF widened(const QRectF& world, double minExtent) {
    QRectF r = world.normalized();
    const QPointF c = r.center();
    const double w = std::max(r.width(), minExtent);
    const double h = std::max(r.height(), minExtent);
    return QRectF(c.x() - w / 2, c.y() - h / 2, w, h);
}
} // namespace

namespace {
// The part of the viewport the fitted rectangle fills; never less than a pixel.
QRectF inner(QSizeF viewport, const QMarginsF& m) {
    const double w = std::max(1.0, viewport.width() - m.left() - m.right());
    const double h = std::max(1.0, viewport.height() - m.top() - m.bottom());
    return QRectF(m.left(), m.top(), w, h);
}
} // namespace

double MapView::fitScale(QSizeF viewport, const QRectF& world, const QMarginsF& margins, double minExtent) {
    const QRectF r = widened(world, std::max(minExtent, 1e-9));
    const QRectF in = inner(viewport, margins);
    return std::min(in.width() / r.width(), in.height() / r.height());
}

void MapView::fit(const QRectF& world, const QMarginsF& margins, double minExtent) {
    m_scale = fitScale(m_viewport, world, margins, minExtent);
    // The rectangle's middle goes to the middle of the part between the margins.
    const QPointF c = widened(world, std::max(minExtent, 1e-9)).center();
    const QPointF at = inner(m_viewport, margins).center();
    m_centre = QPointF(c.x() - (at.x() - m_viewport.width() / 2) / m_scale,
                       c.y() + (at.y() - m_viewport.height() / 2) / m_scale);
}

namespace {
int toInt(double v) {
    constexpr double lo = std::numeric_limits<int>::min() / 2;
    constexpr double hi = std::numeric_limits<int>::max() / 2;
    return int(std::lround(std::clamp(v, lo, hi)));
}

QRectF scrollExtent(const MapView& view, const QRectF& content) {
    const QRectF visible = view.visibleWorld();
    const double dx = visible.width() / 2, dy = visible.height() / 2;
    return content.normalized().adjusted(-dx, -dy, dx, dy).united(visible);
}
} // namespace

ScrollAxis horizontalScroll(const MapView& view, const QRectF& content) {
    const QRectF extent = scrollExtent(view, content);
    const double s = view.scale();
    const double vw = view.viewport().width();
    ScrollAxis a;
    a.page = toInt(vw);
    a.value = toInt(view.centre().x() * s - vw / 2);
    a.minimum = std::min(a.value, toInt(std::floor(extent.left() * s)));
    a.maximum = std::max(a.value, toInt(std::ceil(extent.right() * s - vw)));
    return a;
}

ScrollAxis verticalScroll(const MapView& view, const QRectF& content) {
    const QRectF extent = scrollExtent(view, content);
    const double s = view.scale();
    const double vh = view.viewport().height();
    ScrollAxis a;
    a.page = toInt(vh);
    a.value = toInt(-view.centre().y() * s - vh / 2);
    // QRectF keeps its smallest Y in top(): the world's top edge, the largest Y, is bottom().
    a.minimum = std::min(a.value, toInt(std::floor(-extent.bottom() * s)));
    a.maximum = std::max(a.value, toInt(std::ceil(-extent.top() * s - vh)));
    return a;
}

QPointF centreForHorizontal(const MapView& view, int value) {
    return {(value + view.viewport().width() / 2) / view.scale(), view.centre().y()};
}

QPointF centreForVertical(const MapView& view, int value) {
    return {view.centre().x(), -(value + view.viewport().height() / 2) / view.scale()};
}

double MarkerSize(int count, const QRectF& content, double scale, double minimum, double maximum) {
    if (count <= 0)
        return maximum;
    const double area = std::max(1.0, content.width() * content.height());
    // The side of the square each point would have to itself, on the screen.
    const double room = std::sqrt(area / count) * scale;
    return std::clamp(room * 0.5, minimum, maximum);
}
