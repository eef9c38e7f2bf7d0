#pragma once

#include <QString>
#include <functional>

class QWidget;

namespace tavik {

// The question before unsaved work would be lost: Save runs `save` and goes on only when it
// succeeded, Discard goes on, Cancel stays. True when the caller may go on.
bool SaveOrDiscard(QWidget* parent, const QString& text, const QString& title,
                   const std::function<bool()>& save);

} // namespace tavik
