// The Windows programs carry a version resource, read back through the system's call, with the
// version the about window shows.
#include "shell/fileversion.h"
#include "shell/productinfo.h"
#include "support/buildpaths.h"

#include <QDir>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace tavik;

TEST(ProgramFiles, TheEditorAndTheToolCarryTheVersionTheAboutWindowShows) {
    const QDir programs = QFileInfo(test::ToolPath()).dir();
    for (const QString& name : {QStringLiteral("tavik-editor.exe"), QStringLiteral("tavik.exe")}) {
        const FileVersionInfo info = ReadFileVersion(programs.filePath(name));
        EXPECT_EQ(info.FileType, QStringLiteral("Anwendung")) << name.toStdString();
        const QStringList parts = info.Version.split(u'.');
        ASSERT_EQ(parts.size(), 4) << info.Version.toStdString();
        EXPECT_EQ(parts[3], QStringLiteral("0"));
        // "Version 1.0 Build 0": major, minor and the build (the third part).
        EXPECT_EQ(VersionLine(parts[0].toInt(), parts[1].toInt(), parts[2].toInt()),
                  ProgramVersionLine())
            << name.toStdString();
    }
}
