// Classes of the internal code at the borders of their ranges, and clusters.
#include <gtest/gtest.h>

#include "orvel.h"
#include "text/lao_code.h"

TEST(LaoCode, ExportReadsTheLowEightBitsAlone)
{
    for (int code : {161, 161 + 256, 161 - 256, -95})
        EXPECT_EQ(IsLaoCode(code), 1) << code;
    EXPECT_EQ(IsLaoCode(224 + 512), 0);
}

struct ClusterRow {
    uint8_t pair[2];
    bool joins;
};

static const ClusterRow kClusterRows[] = {
    {{161, 184}, true},  {{161, 249}, true},  {{161, 235}, true},  {{161, 164}, false},
    {{185, 164}, true},  {{185, 249}, true},  {{185, 161}, false}, {{186, 184}, true},
    {{186, 235}, false}, {{164, 184}, true},  {{164, 235}, false}, {{184, 184}, false},
    {{235, 184}, false}, {{236, 184}, false}, {{182, 184}, true},  {{183, 184}, true},
    {{205, 184}, true},  {{249, 184}, false}, {{190, 184}, false}, {{0, 184}, false},
};

TEST(LaoCode, ClustersFollowTheFirstRuleThatApplies)
{
    for (const ClusterRow &row : kClusterRows)
        EXPECT_EQ(IsClusterPair(row.pair), row.joins)
            << int(row.pair[0]) << " " << int(row.pair[1]);
}
