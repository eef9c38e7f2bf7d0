#pragma once

#include <QString>

class QWidget;

namespace tavik {

// Names the controls of a window that show no caption of their own, so assistive technology
// can announce them: a picture-only button takes its tool tip; a list, text box or drop-down
// list that no label is the buddy of takes the title of the frame around it. Names the window
// set itself are kept; the derived ones follow their source each time this runs.
void NameControlsForAccessibility(QWidget* window);

// A caption as read aloud: access-key marks removed, "&&" kept as one "&".
QString WithoutAccessKey(QString caption);

} // namespace tavik
