#pragma once

#include <QString>

namespace tavik {

// `text` as a search box compares it: without case and without accents, so that "gleis 7"
// finds "Gleis 7" and "zurich" finds "Zürich". Letters that do not decompose (ß, Ø, Ł) stay
// themselves apart from their case.
QString FoldForSearch(const QString& text);

} // namespace tavik
