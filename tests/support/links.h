#pragma once

#include <QString>

namespace tavik::test {

// Makes `link` a symbolic link to `target` (a file or folder, which need not exist); false where
// this system cannot make one that its programs see as a link, and LinksWhyNot() says why.
bool MakeLink(const QString& target, const QString& link);
QString LinksWhyNot();

} // namespace tavik::test

// In a test: makes the link, or skips the test where links cannot be made, saying why.
#define TAVIK_LINK_OR_SKIP(target, link)                                                           \
    do {                                                                                           \
        if (!::tavik::test::MakeLink((target), (link)))                                            \
            GTEST_SKIP() << ::tavik::test::LinksWhyNot().toStdString();                            \
    } while (false)
