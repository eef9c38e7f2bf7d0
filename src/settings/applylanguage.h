#pragma once

#include <QString>

class QWidget;

namespace tavik {

// Labels a window from its section of a language file: the title from "Caption", then every
// label, push button (the custom button included), check box, option button, frame, menu and
// menu entry whose objectName is a key of the section. Text boxes, lists, pictures, list
// views and tab bars are never touched; an empty or missing value leaves a control as it is.
// Controls of one array share a name, so each of them gets the text. Menus have no tool tip:
// the part after "|" is ignored for them.
void ApplyLanguage(QWidget* form, const QString& section, const QString& file);

} // namespace tavik
