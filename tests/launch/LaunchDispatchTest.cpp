#include "CFMView.h"
#include "KwTestSupport.h"

#include <gtest/gtest.h>

TEST(LaunchDispatch, nullRequestDoesNothing)
{
    const auto rec = kwtest::AnswerModals([] { LaunchDialog(nullptr); });
    EXPECT_EQ(rec.count(), 0);
}
