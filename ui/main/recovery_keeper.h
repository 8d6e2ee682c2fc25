#pragma once

#include "app/files/recovery.h"
#include "app/state/task.h"
#include "main/editor.h"

#include <QTimer>

namespace orva::ui {

/// Keeps what is not saved in a recovery file, beside the window; removes it once it is saved or
/// given up.
class RecoveryKeeper final : public QObject {
    Q_OBJECT
public:
    RecoveryKeeper(Editor& editor, std::filesystem::path folder);
    ~RecoveryKeeper() override;

    /// The document has become that of a file left behind, which goes when there is a new one.
    void takeOver(LeftBehind left);
    /// For an end that comes unasked: the file stays.
    void writeNow();

signals:
    /// For the first time of a run.
    void failed(const orva::Error& why);

private:
    std::function<Result<Done>()> due();
    void follow();
    void work();
    void finished(const Result<Done>& written);

    Editor& m_editor;
    RecoveryFile m_file;
    std::optional<LeftBehind> m_source;
    QTimer m_due;
    bool m_open = false; ///< the last edits are not in the file, or it has to go
    bool m_failed = false;
    Task m_task; ///< last: it is waited for before the file goes
};

} // namespace orva::ui
