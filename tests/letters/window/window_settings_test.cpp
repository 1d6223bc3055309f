#include "letters/window/window_settings.h"

#include "support/temp_folder.h"

#include <gtest/gtest.h>

namespace tolvek::test {
namespace {

TEST(WindowSettings, ComeBackAsTheyWere)
{
    const TempFolder folder;
    const QString file = QString::fromStdString((folder / "a.ini").string());
    WindowSettings settings;
    settings.geometry = "g";
    settings.panes = "p";
    settings.columns = "c";
    settings.textPoints = 17;
    settings.scheme = Scheme::Dark;
    writeWindowSettings(file, settings);
    const WindowSettings read = readWindowSettings(file);
    EXPECT_EQ(read.geometry, settings.geometry);
    EXPECT_EQ(read.panes, settings.panes);
    EXPECT_EQ(read.columns, settings.columns);
    EXPECT_EQ(read.textPoints, 17);
    EXPECT_EQ(read.scheme, Scheme::Dark);
}

TEST(WindowSettings, AMissingOrOddFileGivesUsableValues)
{
    const TempFolder folder;
    const QString file = QString::fromStdString((folder / "a.ini").string());
    EXPECT_EQ(readWindowSettings(file).textPoints, 11);
    writeBytes(folder / "a.ini", "[General]\ntextPoints=9999\nscheme=77\n");
    EXPECT_EQ(readWindowSettings(file).textPoints, 48);
    EXPECT_EQ(readWindowSettings(file).scheme, Scheme::Dark);
    writeBytes(folder / "a.ini", "\x01\xFF[[[\n=\n");
    readWindowSettings(file);
}

}
}
