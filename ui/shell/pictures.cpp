#include "shell/pictures.h"

#include "widgets/appearance.h"

#include <QEvent>
#include <QFile>
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

namespace {

QSvgWidget* svgWidget(const QString& name, const QByteArray& svg, QWidget* parent)
{
    auto* widget = new QSvgWidget(parent);
    widget->setObjectName(name);
    widget->load(svg);
    widget->setFixedSize(widget->renderer()->defaultSize());
    return widget;
}

QByteArray pictureFile(const QString& file)
{
    usePictures();
    QFile picture(":/pictures/" + file);
    picture.open(QIODevice::ReadOnly);
    return picture.readAll();
}

} // namespace

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
    return svgWidget(name, pictureFile(file), parent);
}

namespace {

/// Follows the appearance.
class Logo final : public QSvgWidget {
public:
    explicit Logo(QWidget* parent) : QSvgWidget(parent) { loadPicture(); }

protected:
    void changeEvent(QEvent* event) override
    {
        QSvgWidget::changeEvent(event);
        if (event->type() == QEvent::PaletteChange)
            loadPicture();
    }

private:
    void loadPicture()
    {
        QByteArray svg = pictureFile("logo.svg");
        if (isDark()) {
            svg.replace("#afc3e1", "#123247");
            svg.replace("#1d4e6b", "#a9cbe6");
            svg.replace("#006699", "#4ba3d3");
        }
        load(svg);
        setFixedSize(renderer()->defaultSize());
    }
};

} // namespace

QWidget* logoPicture(QWidget* parent, const QString& name)
{
    auto* logo = new Logo(parent);
    logo->setObjectName(name);
    logo->setAccessibleName("ORVA");
    return logo;
}

} // namespace orva::ui
