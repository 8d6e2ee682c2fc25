#include "widgets/appearance.h"
#include "window_fixture.h"

#include <QCheckBox>
#include <QDir>
#include <QGroupBox>
#include <QLayout>
#include <QPainter>
#include <QRadioButton>
#include <QToolButton>
#include <cmath>

namespace orva::ui {
namespace {

struct Look {
    Appearance appearance;
    std::int32_t language;
    QSize size;
    double font; ///< of the usual size
};

QString nameOf(const Look& look)
{
    constexpr const char* kAppearances[] = {"classic", "light", "dark", "desktop"};
    return QString("%1-%2-%3x%4-%5")
        .arg(kAppearances[static_cast<int>(look.appearance)])
        .arg(look.language == 1031 ? "de" : "en")
        .arg(look.size.width())
        .arg(look.size.height())
        .arg(look.font);
}

/// Whether a control is smaller than its text needs.
bool cut(const QWidget& control)
{
    const bool hasText = qobject_cast<const QLabel*>(&control) ||
                         qobject_cast<const QAbstractButton*>(&control) ||
                         qobject_cast<const QComboBox*>(&control);
    if (!hasText || !control.isVisible() || control.minimumSizeHint().isEmpty())
        return false;
    const auto* label = qobject_cast<const QLabel*>(&control);
    if (label && label->text().isEmpty())
        return false;
    if (label && label->wordWrap())
        return control.height() < label->heightForWidth(control.width());
    // what may give way says so by a smaller least size
    const QSize needed = control.minimumSizeHint();
    return control.width() < needed.width() || control.height() < needed.height();
}

QStringList cutControls(const QWidget& window)
{
    QStringList names;
    for (const QWidget* control : window.findChildren<QWidget*>())
        if (cut(*control))
            names += QString("%1 is %2x%3, needs %4x%5")
                         .arg(control->objectName())
                         .arg(control->width())
                         .arg(control->height())
                         .arg(control->minimumSizeHint().width())
                         .arg(control->minimumSizeHint().height());
    return names;
}

/// Controls beside each other that lie on each other, and those that stand out of what holds them.
QStringList misplacedControls(const QWidget& window)
{
    QStringList found;
    QList<const QWidget*> parents = {&window};
    for (const QWidget* parent : window.findChildren<QWidget*>())
        parents += parent;
    for (const QWidget* parent : parents) {
        std::vector<const QWidget*> controls;
        for (const QWidget* child : parent->findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (child->isVisible() && !child->isWindow() && parent->layout() &&
                parent->layout()->indexOf(child) >= 0)
                controls.push_back(child);
        for (std::size_t i = 0; i < controls.size(); ++i) {
            const QRect place = controls[i]->geometry();
            if (!parent->rect().contains(place))
                found += controls[i]->objectName() + " stands out";
            for (std::size_t k = i + 1; k < controls.size(); ++k)
                if (place.intersects(controls[k]->geometry()))
                    found += controls[i]->objectName() + " on " + controls[k]->objectName();
        }
    }
    return found;
}

/// All pages and dialogs in many looks; where ORVA_PICTURES names a folder, their pictures go there
/// and every look is taken, else a few.
class Pictures : public Window {
protected:
    void TearDown() override
    {
        QApplication::setFont(m_font);
        useAppearance(Appearance::Classic);
    }

    void look(const Look& look)
    {
        SCOPED_TRACE(nameOf(look).toStdString());
        QFont font = m_font;
        font.setPointSizeF(m_font.pointSizeF() * look.font);
        QApplication::setFont(font);
        session.state().settings.Appearance = look.appearance;
        session.state().settings.map.colours =
            look.appearance == Appearance::Classic ? MapColours::Classic : MapColours::Even;
        session.state().settings.map.contours = look.appearance != Appearance::Classic;
        useAppearance(look.appearance);
        session.ChangeLanguage(look.language);
        auto* tabs = control<QTabWidget>("Main_SSTab");
        tabs->setCurrentIndex(1);
        QTest::qWait(30); // what the new fonts and texts need is known only then
        const bool fits = comes(
            [&] {
                window->resize(look.size);
                QTest::qWait(10);
                return window->size() == look.size;
            },
            5000);
        EXPECT_TRUE(fits) << "smallest width " << window->minimumSizeHint().width();
        m_tiles.clear();
        for (int page = 0; page < tabs->count(); ++page) {
            tabs->setCurrentIndex(page);
            QTest::qWait(10);
            take(*window);
            if (page == 1) {
                click("CalcBand_cmd");
                QTest::qWait(10);
                take(*window);
                control<QAbstractButton>("Lock_chk")->click();
            }
        }
        eachDialog([&](QWidget& dialog) {
            take(dialog);
            EXPECT_LE(dialog.height(), look.size.height());
        });
        save(nameOf(look));
    }

private:
    void take(QWidget& shown)
    {
        EXPECT_EQ(cutControls(shown).join("\n").toStdString(), "")
            << shown.objectName().toStdString();
        EXPECT_EQ(misplacedControls(shown).join("\n").toStdString(), "")
            << shown.objectName().toStdString();
        m_tiles.push_back(shown.grab());
    }

    void save(const QString& name)
    {
        const QString folder = qEnvironmentVariable("ORVA_PICTURES");
        if (folder.isEmpty())
            return;
        QDir().mkpath(folder);
        constexpr int kColumns = 2;
        const QSize tile = m_tiles.front().size();
        const int rows = (static_cast<int>(m_tiles.size()) + kColumns - 1) / kColumns;
        QImage sheet(tile.width() * kColumns, tile.height() * rows, QImage::Format_RGB32);
        sheet.fill(Qt::gray);
        QPainter painter(&sheet);
        for (int i = 0; i < static_cast<int>(m_tiles.size()); ++i) {
            QPixmap& picture = m_tiles[static_cast<std::size_t>(i)];
            picture.setDevicePixelRatio(1);
            painter.drawPixmap(i % kColumns * tile.width(), i / kColumns * tile.height(), picture);
        }
        painter.end();
        sheet.save(folder + "/" + name + QString("-ratio%1.png").arg(window->devicePixelRatioF()));
    }

    const QFont m_font = QApplication::font();
    std::vector<QPixmap> m_tiles;
};

TEST_F(Pictures, NoTextIsCut)
{
    const bool all = qEnvironmentVariableIsSet("ORVA_PICTURES");
    const std::pair<QSize, double> sizes[] = {
        {{1024, 700}, 1}, {{1280, 720}, 1.5}, {{1280, 720}, 1}, {{1920, 1080}, 1}};
    for (const Appearance appearance :
         {Appearance::Classic, Appearance::Light, Appearance::Dark, Appearance::Desktop})
        for (const std::int32_t language : {1033, 1031})
            for (const auto& [size, font] : sizes) {
                const bool few =
                    (appearance == Appearance::Classic || appearance == Appearance::Dark) &&
                    (size.width() == 1024 || font > 1);
                if (all || few)
                    look({appearance, language, size, font});
            }
}

} // namespace
} // namespace orva::ui
