#pragma once

#include "widgets/session.h"

#include <QDialog>

namespace orva::ui {

/// All keys, as the commands of a window have them.
class KeysDialog final : public QDialog {
    Q_OBJECT
public:
    KeysDialog(const Session& session, QWidget& window);
};

} // namespace orva::ui
