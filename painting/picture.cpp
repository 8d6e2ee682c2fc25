#include "painting/picture.h"

#include "painting/painter_surface.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QHashFunctions>
#include <QImage>
#include <QLoggingCategory>
#include <algorithm>
#include <memory>
#include <string_view>
#include <vector>

#include <unistd.h>

namespace orva {

namespace {

/// What is set for a desktop (scale, font resolution, style) changes no picture.
void ignoreToolkitVariables()
{
    std::vector<std::string> names;
    for (char** entry = environ; entry && *entry; ++entry)
        if (const std::string_view variable = *entry; variable.starts_with("QT_"))
            names.emplace_back(variable.substr(0, variable.find('=')));
    for (const std::string& name : names)
        unsetenv(name.c_str());
}

/// Throws std::bad_alloc where there is not enough to draw with: the toolkit and its fonts end the
/// program instead.
void needMemory()
{
    constexpr std::size_t kBytes = 80U << 20U;
    ::operator delete(::operator new(kBytes));
}

} // namespace

void needApplication()
{
    if (QCoreApplication::instance())
        return;
    needMemory();
    ignoreToolkitVariables();
    QHashSeed::setDeterministicGlobalSeed(); // fonts come into a PDF in the order of a hash
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QLoggingCategory::setFilterRules(
        "default.warning=false"); // of folders that a picture needs not
    static int argc = 1;
    static char name[] = "orva";
    static char* argv[] = {name, nullptr};
    static const QGuiApplication application(argc, argv);
}

std::string pngPicture(int width, int height, const std::function<void(DrawingSurface&)>& draw,
                       double ratio)
{
    needApplication();
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    image.setDevicePixelRatio(ratio);
    {
        QPainter painter(&image);
        PainterSurface surface(painter, QSizeF(width, height) / ratio);
        surface.setTextHeight(std::clamp(height / 50.0, 10.0, 18.0));
        draw(surface);
    }
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return buffer.data().toStdString();
}

} // namespace orva
