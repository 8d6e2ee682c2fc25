#include "shell/pictures.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>
#include <QSvgWidget>

/// The pictures lie in a library, which does not bring them in by itself. Not in a namespace: the
/// macro declares a function of the global one.
static void usePictures()
{
    Q_INIT_RESOURCE(pictures);
}

namespace orva::ui {

QIcon programIcon()
{
    usePictures();
    QIcon icon;
    QSvgRenderer renderer(QString(":/pictures/icon.svg"));
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        renderer.render(&painter);
        icon.addPixmap(pixmap);
    }
    return icon;
}

QWidget* picture(const QString& name, const QString& file, QWidget* parent)
{
    usePictures();
    auto* widget = new QSvgWidget(":/pictures/" + file, parent);
    widget->setObjectName(name);
    widget->setFixedSize(widget->renderer()->defaultSize());
    return widget;
}

QWidget* logoPicture(QWidget* parent)
{
    QWidget* logo = picture("imgLogo", "logo.svg", parent);
    logo->setAccessibleName("ORVA");
    return logo;
}

} // namespace orva::ui
