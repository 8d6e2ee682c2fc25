#include "main/recovery_keeper.h"

#include "app/files/log.h"

namespace orva::ui {

namespace {

/// From an edit to its file: half of what may be lost.
constexpr int kDueMs = 1000;
constexpr int kPatienceMs = 3000;

} // namespace

RecoveryKeeper::RecoveryKeeper(Editor& editor, std::filesystem::path folder)
    : QObject(&editor), m_editor(editor), m_file(std::move(folder))
{
    m_due.setSingleShot(true);
    connect(&m_due, &QTimer::timeout, this, &RecoveryKeeper::work);
    connect(&editor, &Editor::modifiedChanged, this, &RecoveryKeeper::follow);
}

RecoveryKeeper::~RecoveryKeeper()
{
    if (m_source)
        removeLeftBehind(*m_source);
}

/// What the file needs now; it may be done on any thread.
std::function<Result<Done>()> RecoveryKeeper::due()
{
    const Document& document = m_editor.document();
    if (document.modified())
        return [this, unsaved = Unsaved{document.state(), document.file()}] {
            return m_file.write(recoveryBytes(unsaved));
        };
    return [this]() -> Result<Done> {
        m_file.remove();
        return Done{};
    };
}

void RecoveryKeeper::takeOver(LeftBehind left)
{
    m_source = std::move(left);
    follow();
}

/// The timer is not started anew by the next edit, nor stopped by one that happens to give the
/// saved state: who edits without a pause is covered, too.
void RecoveryKeeper::follow()
{
    m_open = true;
    if (!m_editor.document().modified())
        work();
    else if (!m_due.isActive())
        m_due.start(kDueMs);
}

void RecoveryKeeper::work()
{
    if (!m_open || m_task.running())
        return; // its end comes back here
    m_open = false;
    const auto outcome = std::make_shared<Result<Done>>(Done{});
    m_task.start([outcome, act = due()](const Task::Stop&) { *outcome = act(); },
                 [this, outcome] { finished(*outcome); });
}

void RecoveryKeeper::finished(const Result<Done>& written)
{
    if (written && m_source) {
        removeLeftBehind(*m_source);
        m_source.reset();
    }
    if (!written && !m_failed) {
        m_failed = true;
        qCWarning(logFiles, "%s", written.error().text().c_str());
        emit failed(written.error());
    }
    if (m_open && !m_due.isActive())
        work();
}

void RecoveryKeeper::writeNow()
{
    if (!m_task.wait(kPatienceMs))
        return; // the disk has not even taken the one before
    if (const Result<Done> written = due()(); !written)
        qCWarning(logFiles, "%s", written.error().text().c_str());
}

} // namespace orva::ui
