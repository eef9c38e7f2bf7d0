#pragma once

namespace tavik::test {

// Makes every Qt warning during a test a test failure: it means something was used wrongly.
void failOnQtWarnings();

} // namespace tavik::test
