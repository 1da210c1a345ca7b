#pragma once
// "Now" for everything that stamps a date, replaceable by tests.
#include <QDateTime>
#include <functional>

QDateTime Now();
void setClock(std::function<QDateTime()> clock); // an empty function restores the system clock
// The date format of the program's texts (log lines, LAST_UPDATED): "yyyy-MM-dd hh:mm:ss", which the
// database reads back as a date and which sorts as text.
QString generalDate(const QDateTime& t);
