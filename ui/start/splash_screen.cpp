#include "start/splash_screen.h"

#include "shell/pictures.h"
#include "widgets/controls.h"

#include <QGridLayout>
#include <QVBoxLayout>

namespace orva::ui {

namespace {

constexpr int kTickMs = 500;
constexpr int kCloseTick = 4;

} // namespace

SplashScreen::SplashScreen(Session& session, bool waits)
    : QDialog(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      m_session(session),
      m_waits(waits),
      m_loaded(std::make_unique<StartData>())
{
    setObjectName("frmSplashScreen");
    setWindowIcon(programIcon());
    setModal(true);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(1, 1, 1, 8);
    layout->addWidget(picture("imgSplash", "splash.svg", this));
    auto* bottom = new QGridLayout;
    QWidget* logo = logoPicture(this, "Image1");
    lblTitle = named<QLabel>("lblTitle", this);
    lblTitle->setAlignment(Qt::AlignCenter);
    bottom->addWidget(logo, 0, 0);
    bottom->addWidget(lblTitle, 0, 1);
    bottom->setColumnMinimumWidth(2, logo->width()); // the title stays in the middle
    bottom->setColumnStretch(1, 1);
    layout->addLayout(bottom);
    connect(&session, &Session::LanguageChanged, this, &SplashScreen::showTexts);
    showTexts();

    SplashTimer = named<QTimer>("SplashTimer", this);
    connect(SplashTimer, &QTimer::timeout, this, &SplashScreen::tick);
    SplashTimer->setTimerType(Qt::PreciseTimer); // a coarse one is off by 100 ms in four ticks
    SplashTimer->start(waits ? kTickMs : 0);
}

SplashScreen::~SplashScreen() = default;

void SplashScreen::showTexts()
{
    setWindowTitle(kProgramTitle);
    lblTitle->setText(kProgramTitle + m_session.text(Text::SplashVersion) + ORVA_VERSION);
}

void SplashScreen::skip()
{
    m_waits = false;
    if (m_whole)
        accept();
}

void SplashScreen::keyPressEvent(QKeyEvent*)
{
    skip();
}

void SplashScreen::mousePressEvent(QMouseEvent*)
{
    skip();
}

void SplashScreen::tick()
{
    ++m_ticks;
    if (m_ticks == 1)
        load();
    else if (m_ticks >= kCloseTick)
        accept();
}

/// Beside the window, so that it goes on painting; its clock stands still meanwhile.
void SplashScreen::load()
{
    SplashTimer->stop();
    m_loader.start(
        [this](const Task::Stop&) {
            m_loaded->state.settings = LoadSettings(m_session.store());
            followWeather(m_loaded->state);
            m_loaded->load = LoadSystemData(m_loaded->state, m_session.programFolder() / "bin");
        },
        [this] {
            m_whole = true;
            if (m_loaded->load && m_waits)
                SplashTimer->start(kTickMs);
            else
                accept();
        });
}

} // namespace orva::ui
