#include "startup/appinfo.h"

#include <gtest/gtest.h>

TEST(AppInfo, VersionPiecesCompareAsNumbers)
{
    struct Case {
        const char* a;
        const char* b;
        bool newer;
    };
    const Case cases[] = {
        {"2.4", "2.4.0", false},    // a missing piece counts as 0
        {"2.4.0", "2.4", false},    //
        {"2.10.0", "2.4.0", true},  // not compared as text
        {"2.4.0", "2.10.0", false}, //
        {"2.x.1", "2.0.0", true},   // x counts as 0, the third piece decides
        {"2.4.1", "2.4.0", true},   //
        {"3", "2.99.99", true},     // the first difference decides
        {"2..5", "2.5", false},     // empty pieces are dropped, not read as 0
        {"2.4.0", "2.4.0", false},  // equal is not newer
        {"", "0", false},           //
    };
    for (const Case& c : cases)
        EXPECT_EQ(AppInfo::isVersion(c.a, c.b), c.newer) << c.a << " vs " << c.b;
}
