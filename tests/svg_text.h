#pragma once

#include <QRegularExpression>
#include <QString>
#include <map>
#include <string>

namespace orva {

/// The texts of a picture in the order of painting, with the size and weight of their fonts where
/// that is wanted, and how many shapes of each kind it has.
inline std::string saidBySvg(const QString& drawn, bool fonts)
{
    std::string said;
    std::map<std::string, int> shapes;
    static const QRegularExpression element("<([a-z]+)[ >]([^<]*)");
    for (auto at = element.globalMatch(drawn); at.hasNext();) {
        const QRegularExpressionMatch match = at.next();
        const std::string name = match.captured(1).toStdString();
        ++shapes[name];
        if (name != "text")
            continue;
        said += match.captured(2).section('>', 1).trimmed().toStdString();
        static const QRegularExpression font("font-size=\"([^\"]*)\" font-weight=\"([^\"]*)\"");
        const QRegularExpressionMatch used = font.match(match.captured(2));
        if (fonts)
            said +=
                " (" + used.captured(1).toStdString() + ", " + used.captured(2).toStdString() + ")";
        said += '\n';
    }
    for (const auto& [name, count] : shapes)
        said += name + ' ' + std::to_string(count) + '\n';
    return said;
}

} // namespace orva
