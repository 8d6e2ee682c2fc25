#include "app/state/ini_text.h"

#include <algorithm>
#include <cctype>

namespace orva {

namespace {

bool isPlain(QChar c)
{
    return c.unicode() < 0x80 && (c.isLetterOrNumber() || c == '_' || c == '-' || c == '.');
}

/// What a name cannot hold as it is stands there by its number.
QString escapedName(const QString& name)
{
    QString escaped;
    for (const QChar c : name) {
        const int code = c.unicode();
        if (isPlain(c))
            escaped += c;
        else if (c == '/')
            escaped += '\\';
        else if (code < 0x100)
            escaped += QString("%%1").arg(code, 2, 16, QChar('0'));
        else
            escaped += QString("%U%1").arg(code, 4, 16, QChar('0'));
    }
    return escaped;
}

QString escapedText(const QString& text)
{
    QString escaped;
    bool afterNumber = false; // whose digits would not end
    for (const QChar c : text) {
        const int code = c.unicode();
        const bool digit = isxdigit(code < 0x80 ? code : 0) != 0;
        const bool asNumber = code < 0x20 || code == 0x7f || (afterNumber && digit);
        if (asNumber)
            escaped += QString("\\x%1").arg(code, 0, 16);
        else if (c == '\\' || c == '"')
            escaped += QString("\\") + c;
        else
            escaped += c;
        afterNumber = asNumber;
    }
    if (text.startsWith('@')) // begins what is no text
        escaped.prepend('@');
    const bool quoted = text.startsWith(' ') || text.endsWith(' ') || text.contains(';') ||
                        text.contains(',') || text.contains('=');
    return quoted ? '"' + escaped + '"' : escaped;
}

} // namespace

QByteArray iniText(const IniValues& values)
{
    QMap<QString, QString> sections;
    for (auto value = values.begin(); value != values.end(); ++value) {
        const qsizetype slash = value.key().indexOf('/');
        QStringList texts;
        for (const QString& text : value.value())
            texts += escapedText(text);
        sections[value.key().left(std::max<qsizetype>(slash, 0))] +=
            escapedName(value.key().mid(slash + 1)) + '=' + texts.join(", ") + '\n';
    }
    QString whole;
    for (auto section = sections.begin(); section != sections.end(); ++section)
        whole += QString(whole.isEmpty() ? "[%1]\n" : "\n[%1]\n")
                     .arg(section.key().isEmpty() ? "General" : escapedName(section.key())) +
                 section.value();
    return whole.toUtf8();
}

} // namespace orva
