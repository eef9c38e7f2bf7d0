#pragma once

#include <functional>

class QWidget;

namespace tavik {

class Language;

// Keeps an open window in the program's language. Whenever the language changes the window is
// labelled again from its section, `codeTexts` puts back the texts its code sets from numbered
// texts (column captions, tabs, names of lists), and controls are named for assistive
// technology. `codeTexts` and the naming run once now, after the window's own ApplyLanguage.
void FollowLanguage(QWidget* form, const Language& language, std::function<void()> codeTexts = {});

// Labels a window from its own section now (ApplyLanguage) and keeps it in the language.
void LocaliseWindow(QWidget* form, const Language& language);

// Makes the active language file the language of Qt's own texts and relabels every open window
// before it returns.
void SwitchLanguage(const Language& language);

} // namespace tavik
