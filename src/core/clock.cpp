#include "core/clock.h"

namespace {
std::function<QDateTime()>& clockRef() {
    static std::function<QDateTime()> c;
    return c;
}
} // namespace

QDateTime Now() {
    return clockRef() ? clockRef()() : QDateTime::currentDateTime();
}
void setClock(std::function<QDateTime()> clock) {
    clockRef() = std::move(clock);
}
QString generalDate(const QDateTime& t) {
    return t.toString(QStringLiteral("yyyy-MM-dd hh:mm:ss"));
}
