# The Qt, GoogleTest and standard headers nearly every file includes, parsed once per target
# instead of once per file: they are most of what a file of this program costs to compile.
option(TAVIK_PCH "Precompile the headers most files include" ON)

set(TAVIK_PCH_CORE
    <QByteArray> <QCoreApplication> <QDir> <QFile> <QFileInfo> <QHash> <QList> <QObject> <QSet>
    <QString> <QStringList> <QTimer> <QVariant>
    <algorithm> <array> <cmath> <cstdint> <functional> <memory> <optional> <vector>)
set(TAVIK_PCH_UI ${TAVIK_PCH_CORE}
    <QAction> <QApplication> <QDialog> <QGridLayout> <QGroupBox> <QHBoxLayout> <QLabel>
    <QLineEdit> <QListWidget> <QMenu> <QPlainTextEdit> <QPushButton> <QTreeWidget> <QUndoStack>
    <QVBoxLayout> <QWidget>)
set(TAVIK_PCH_TEST_CORE ${TAVIK_PCH_CORE} <QTest> <gtest/gtest.h>)
set(TAVIK_PCH_TEST_UI ${TAVIK_PCH_UI} <QTest> <gtest/gtest.h>)

# `headers` (a list's name above) precompiled for `target`, when precompiling is on.
function(tavik_precompile target headers)
    if(TAVIK_PCH)
        target_precompile_headers(${target} PRIVATE ${${headers}})
    endif()
endfunction()
