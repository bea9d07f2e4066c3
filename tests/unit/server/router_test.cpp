#include "http/http_error.h"
#include "http/router.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

struct NamedHandler : Handler {
    explicit NamedHandler(std::string theName)
        : name(std::move(theName)) {}
    void handle(Exchange& /*exchange*/) override {}
    std::string name;
};

class RouterTest : public testing::Test {
protected:
    RouterTest() {
        add("GET", "/v1/things", Access::Public);
        add("POST", "/v1/things", Access::SignedIn);
        add("GET", "/v1/things/{id}/parts/{part}", Access::SignedIn);
        add("GET", "/v1/things/special", Access::Public);
        add("GET", "/v1/things/{id}", Access::SignedIn);
    }

    void add(const std::string& method, const std::string& path, Access access) {
        router.add(method, path, access, std::make_unique<NamedHandler>(method + " " + path));
    }

    [[nodiscard]] std::string nameFor(const std::string& method, const std::string& path) const {
        return dynamic_cast<NamedHandler&>(router.find(method, path).handler).name;
    }

    [[nodiscard]] int statusFor(const std::string& method, const std::string& path) const {
        try {
            static_cast<void>(router.find(method, path));
            return 200;
        } catch (const HttpError& error) {
            return error.status();
        }
    }

    Router router;
};

TEST_F(RouterTest, MethodAndPath_DecideTogether) {
    EXPECT_EQ(nameFor("GET", "/v1/things"), "GET /v1/things");
    EXPECT_EQ(nameFor("POST", "/v1/things"), "POST /v1/things");
    EXPECT_EQ(router.find("GET", "/v1/things").access, Access::Public);
    EXPECT_EQ(router.find("POST", "/v1/things").access, Access::SignedIn);
}

TEST_F(RouterTest, Parameters_AreNamed) {
    const auto match = router.find("GET", "/v1/things/42/parts/7");
    EXPECT_THAT(match.parameters,
                testing::UnorderedElementsAre(testing::Pair("id", "42"), testing::Pair("part", "7")));
}

TEST_F(RouterTest, FirstFittingRoute_Wins) {
    EXPECT_EQ(nameFor("GET", "/v1/things/special"), "GET /v1/things/special");
    EXPECT_EQ(nameFor("GET", "/v1/things/other"), "GET /v1/things/{id}");
}

TEST_F(RouterTest, UnknownPaths_Are404) {
    for (const std::string path : {"", "/", "/v1", "/v1/things/", "/v1/thingsx", "//v1/things",
                                   "/v1/things/1/parts", "/v1/things/1/parts/2/3"}) {
        EXPECT_EQ(statusFor("GET", path), 404) << path;
    }
}

TEST_F(RouterTest, WrongMethod_Is405_AndTheRightOnesAreNamed) {
    EXPECT_EQ(statusFor("DELETE", "/v1/things"), 405);
    EXPECT_EQ(router.allowedMethods("/v1/things"), "GET, POST");
}

} // namespace
} // namespace velmora::server
