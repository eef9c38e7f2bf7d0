#pragma once

#include <QString>
#include <span>

namespace tavik {

class Language;
class RuntimeError;

// The runtime's message for an error in the editor's language: "Run-time error '9':" and the
// error's text. The runtime's own texts come from the language file; a text an error carries
// of its own (a file named, a program holding a lock) is shown as it is. Without a language
// file the runtime's German message is shown.
QString RuntimeErrorMessage(const Language& language, const RuntimeError& error);

// The error numbers whose texts the language files hold.
std::span<const int> TranslatedRuntimeErrors();

} // namespace tavik
