#pragma once

class QWidget;

namespace tavik {

class Language;

// Opens the readme file the language file names ("_Files" entry 6) with the system's viewer;
// when there is none to open, a message says which file is missing.
void OpenReadme(QWidget* parent, const Language& language);

} // namespace tavik
