#include "tests/Contract/WorkspaceContract.h"

namespace contract {

TEST_P(WorkspaceContract, HandsAUrlToTheSystem) {
    const std::string page = "https://example.org/path?query=1#part";
    EXPECT_TRUE(workspace_.openURL(page));
    EXPECT_TRUE(backend_->hasOpened({page}));
    const std::string settings = "x-settings:privacy?Part_A";
    EXPECT_TRUE(workspace_.openURL(settings));
    EXPECT_TRUE(backend_->hasOpened({page, settings}));
}

TEST_P(WorkspaceContract, RefusesWhatIsNoUrl) {
    for (const char* text : {"", "no scheme", "relative/path", "/etc/passwd", ":part", "1a:b"}) {
        EXPECT_FALSE(workspace_.openURL(text)) << text;
    }
    EXPECT_TRUE(backend_->hasOpened({}));
}

TEST_P(WorkspaceContract, SaysThatTheSystemOpensNothing) {
    backend_->takeOpenersAway();
    EXPECT_FALSE(workspace_.openURL("https://example.org/"));
}

} // namespace contract
