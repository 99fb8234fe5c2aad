#include "QueueChanges.h"

#include <gmock/gmock.h>

namespace kestrel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(QueueChangesTest, areNoneAtFirst) {
    const QueueChanges changes;
    EXPECT_THAT(changes.changed(), IsEmpty());
    EXPECT_THAT(changes.removed(), IsEmpty());
}

TEST(QueueChangesTest, moveWithTheJobsAfterARemovedOne) {
    QueueChanges changes;
    changes.addChange(4);
    changes.addChange(5);
    changes.addChange(6);
    changes.addRemoval(5);
    EXPECT_THAT(changes.changed(), ElementsAre(4, 5));
    changes.addRemoval(0);
    EXPECT_THAT(changes.changed(), ElementsAre(3, 4));
    EXPECT_THAT(changes.removed(), ElementsAre(5, 0));
}

TEST(QueueChangesTest, ofARemovedJobAreDropped) {
    QueueChanges changes;
    changes.addChange(2);
    changes.addChange(2);
    changes.addRemoval(2);
    EXPECT_THAT(changes.changed(), IsEmpty());
}

} // namespace
} // namespace kestrel
