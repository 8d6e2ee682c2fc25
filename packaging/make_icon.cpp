#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

/// make_icon DRAWING.svg SIZE OUT.png
int main(int argc, char** argv)
{
    const int size = argc == 4 ? QByteArray(argv[2]).toInt() : 0;
    QSvgRenderer drawing(argc == 4 ? QString::fromLocal8Bit(argv[1]) : QString());
    QImage icon(size, size, QImage::Format_ARGB32);
    icon.fill(Qt::transparent);
    QPainter painter(&icon);
    drawing.render(&painter);
    painter.end();
    if (drawing.isValid() && icon.save(QString::fromLocal8Bit(argv[3])))
        return 0;
    std::fputs("make_icon DRAWING.svg SIZE OUT.png: no icon made\n", stderr);
    return 1;
}
