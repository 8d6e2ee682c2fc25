#pragma once

#include <QMap>
#include <QString>
#include <QStringList>

namespace orva {

/// Texts by "section/key"; several are a list.
using IniValues = QMap<QString, QStringList>;

/// A file of that kind, UTF-8, as QSettings (IniFormat) reads it.
QByteArray iniText(const IniValues& values);

} // namespace orva
