#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "settings/web/PageRoutes.h"
#include "tests/settings/web/TemporaryPage.h"

namespace settings {
namespace {

using ::testing::HasSubstr;

constexpr const char* session = "zentrova-session-8080=the-session";

class PageRoutesTest : public ::testing::Test {
 protected:
  PageRoutesTest() {
    std::string problem;
    auto files = StaticFiles::load(_page.folder.path(), problem);
    EXPECT_TRUE(files) << problem;
    _routes = std::make_unique<PageRoutes>(AccessRules{8080, {"the-token", "the-session"}},
                                           std::move(*files));
  }

  static RequestFacts get(std::string target, std::string cookie = session) {
    RequestFacts facts;
    facts.method = "GET";
    facts.target = std::move(target);
    facts.hosts = {"127.0.0.1:8080"};
    if (!cookie.empty()) facts.cookies = {std::move(cookie)};
    return facts;
  }

  HttpAnswer answer(const RequestFacts& request) const {
    Routed routed = _routes->route(request);
    if (auto* answer = std::get_if<HttpAnswer>(&routed)) return *answer;
    ADD_FAILURE() << "no finished answer";
    return {};
  }

  static std::string header(const HttpAnswer& answer, const std::string& wanted) {
    for (const auto& [name, value] : answer.headers) {
      if (name == wanted) return value;
    }
    return "(absent)";
  }

  test::TemporaryPage _page;
  std::unique_ptr<PageRoutes> _routes;
};

TEST_F(PageRoutesTest, WithoutASessionEverythingIsRefusedAndThePrintedAddressNamed) {
  for (const char* target :
       {"/", "/index.html", "/app.js", "/socket", "/nothing",
        "/images/0000000000000000000000000000000000000000000000000000000000000000"}) {
    const HttpAnswer refused = answer(get(target, ""));
    EXPECT_EQ(refused.status, 403U) << target;
    EXPECT_THAT(*refused.body, HasSubstr("Open the address that it printed"));
  }
}

TEST_F(PageRoutesTest, TheTokenIsExchangedForACookieByARedirect) {
  const HttpAnswer redirect = answer(get("/?token=the-token", ""));
  EXPECT_EQ(redirect.status, 303U);
  EXPECT_EQ(header(redirect, "Location"), "/");
  EXPECT_EQ(header(redirect, "Set-Cookie"),
            "zentrova-session-8080=the-session; Path=/; HttpOnly; SameSite=Strict");
}

TEST_F(PageRoutesTest, AWrongTokenIsRefusedEvenWithASession) {
  EXPECT_EQ(answer(get("/?token=the-session", "")).status, 403U);
  EXPECT_EQ(answer(get("/?token=", "")).status, 403U);
  EXPECT_EQ(answer(get("/?token=wrong")).status, 403U);
}

TEST_F(PageRoutesTest, WithTheSessionThePageIsServed) {
  const HttpAnswer page = answer(get("/"));
  EXPECT_EQ(page.status, 200U);
  EXPECT_EQ(*page.body, "<!doctype html><title>page</title>");
  EXPECT_EQ(header(page, "Content-Type"), "text/html; charset=utf-8");
  EXPECT_EQ(header(answer(get("/app.js")), "Content-Type"), "text/javascript; charset=utf-8");
  EXPECT_EQ(header(answer(get("/fonts/Inter.woff2")), "Content-Type"), "font/woff2");
}

TEST_F(PageRoutesTest, APathNeverLeavesTheFolder) {
  for (const char* target : {"/../index.html", "/fonts/../app.js", "//app.js", "/fonts", "/fonts/",
                             "/%2e%2e/app.js", "/etc/passwd", "app.js", ""}) {
    EXPECT_EQ(answer(get(target)).status, 404U) << target;
  }
}

TEST_F(PageRoutesTest, OnlyGetAndHeadAreAnswered) {
  for (const char* method : {"POST", "PUT", "DELETE", "OPTIONS", "PATCH", "get"}) {
    RequestFacts facts = get("/");
    facts.method = method;
    const HttpAnswer refused = answer(facts);
    EXPECT_EQ(refused.status, 405U) << method;
    EXPECT_EQ(header(refused, "Allow"), "GET, HEAD");
  }
}

TEST_F(PageRoutesTest, AnotherHostIsMisdirectedAndAnotherOriginForbidden) {
  RequestFacts facts = get("/");
  facts.hosts = {"evil.example:8080"};
  EXPECT_EQ(answer(facts).status, 421U);
  facts = get("/");
  facts.origins = {"http://evil.example"};
  EXPECT_EQ(answer(facts).status, 403U);
}

TEST_F(PageRoutesTest, EveryAnswerBearsTheSecurityHeadersAndNoCors) {
  RequestFacts wrongHost = get("/");
  wrongHost.hosts = {"evil.example"};
  for (const RequestFacts& request : {get("/"), get("/", ""), get("/nothing"), wrongHost}) {
    const HttpAnswer given = answer(request);
    const std::string policy = header(given, "Content-Security-Policy");
    EXPECT_THAT(policy, HasSubstr("default-src 'none'"));
    EXPECT_THAT(policy, HasSubstr("script-src 'self'; style-src 'self'"));
    EXPECT_THAT(policy, HasSubstr("frame-ancestors 'none'"));
    EXPECT_EQ(header(given, "X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(header(given, "Referrer-Policy"), "no-referrer");
    EXPECT_EQ(header(given, "Access-Control-Allow-Origin"), "(absent)");
    EXPECT_EQ(policy.find("evil.example"), std::string::npos);
  }
}

TEST_F(PageRoutesTest, OnlyAHashNamesAnImage) {
  const std::string hash(64, 'a');
  const Routed routed = _routes->route(get("/images/" + hash));
  ASSERT_TRUE(std::holds_alternative<ImageWanted>(routed));
  EXPECT_EQ(std::get<ImageWanted>(routed).hash, hash);
  for (const std::string& name :
       {std::string(63, 'a'), std::string(65, 'a'), std::string(64, 'A'), std::string(64, 'g'),
        std::string("../") + std::string(61, 'a')}) {
    EXPECT_EQ(answer(get("/images/" + name)).status, 404U) << name;
  }
}

TEST_F(PageRoutesTest, AnImageMayBeKeptForGoodAndAMissingOneIsNotFound) {
  const RequestFacts request = get("/images/" + std::string(64, 'a'));
  const HttpAnswer found = _routes->image(request, std::make_shared<const std::string>("png"));
  EXPECT_EQ(found.status, 200U);
  EXPECT_EQ(*found.body, "png");
  EXPECT_EQ(header(found, "Content-Type"), "image/png");
  EXPECT_EQ(header(found, "Cache-Control"), "private, max-age=31536000, immutable");
  const auto jpeg = std::make_shared<const std::string>("\xFF\xD8\xFF rest");
  EXPECT_EQ(header(_routes->image(request, jpeg), "Content-Type"), "image/jpeg");
  const HttpAnswer missing = _routes->image(request, nullptr);
  EXPECT_EQ(missing.status, 404U);
  EXPECT_EQ(header(missing, "Cache-Control"), "no-store");
}

TEST_F(PageRoutesTest, TheSocketAddressIsForAnUpgradeOnly) {
  EXPECT_EQ(answer(get("/socket")).status, 426U);
  RequestFacts facts = get("/socket");
  facts.wantsSocket = true;
  EXPECT_EQ(answer(facts).status, 403U) << "an upgrade without an Origin";
  facts.origins = {"http://127.0.0.1:8080"};
  EXPECT_TRUE(std::holds_alternative<SocketWanted>(_routes->route(facts)));
}

TEST(StaticFiles, AFolderWithoutAPageIsRefusedWithItsName) {
  const test::TemporaryFolder folder;
  std::string problem;
  EXPECT_FALSE(StaticFiles::load(folder.path(), problem));
  EXPECT_THAT(problem, HasSubstr(folder.path() + " holds no index.html"));
  EXPECT_FALSE(StaticFiles::load(folder.in("missing"), problem));
  EXPECT_THAT(problem, HasSubstr(folder.in("missing")));
}

TEST(StaticFiles, LinksAndHiddenFilesAreNotServed) {
  const test::TemporaryPage page;
  page.folder.write(".secret", "s");
  page.folder.write(".hidden/file.txt", "s");
  std::filesystem::create_symlink("/etc/passwd", page.folder.in("link.txt"));
  std::string problem;
  const auto files = StaticFiles::load(page.folder.path(), problem);
  ASSERT_TRUE(files);
  EXPECT_EQ(files->find("/.secret"), nullptr);
  EXPECT_EQ(files->find("/.hidden/file.txt"), nullptr);
  EXPECT_EQ(files->find("/link.txt"), nullptr);
  EXPECT_NE(files->find("/"), nullptr);
}

TEST_F(PageRoutesTest, APhotoIsTakenFromOurOwnPageOnly) {
  RequestFacts photo = get("/photos");
  photo.method = "POST";
  photo.origins = {"http://127.0.0.1:8080"};
  EXPECT_TRUE(std::holds_alternative<PhotoWanted>(_routes->route(photo)));

  RequestFacts unsaid = photo;
  unsaid.origins.clear();
  EXPECT_EQ(answer(unsaid).status, 403U);
  RequestFacts foreign = photo;
  foreign.origins = {"http://localhost:8080"};
  EXPECT_EQ(answer(foreign).status, 403U);
  RequestFacts stranger = photo;
  stranger.cookies.clear();
  EXPECT_EQ(answer(stranger).status, 403U);
  EXPECT_EQ(header(answer(stranger), "Content-Type"), "application/json");
  RequestFacts rebound = photo;
  rebound.hosts = {"evil.example"};
  EXPECT_EQ(answer(rebound).status, 421U);
}

TEST_F(PageRoutesTest, PhotosAreSentAndNotFetched) {
  for (const char* method : {"GET", "HEAD", "PUT", "DELETE"}) {
    RequestFacts request = get("/photos");
    request.method = method;
    const HttpAnswer refused = answer(request);
    EXPECT_EQ(refused.status, 405U) << method;
    EXPECT_EQ(header(refused, "Allow"), "POST");
  }
}

TEST_F(PageRoutesTest, WhyAPhotoIsRefusedIsSaidToThePagesProgram) {
  const HttpAnswer refused = _routes->refusedPhoto(get("/photos"), 413, "It is \"too\" large.");
  EXPECT_EQ(refused.status, 413U);
  EXPECT_EQ(*refused.body, R"({"message":"It is \"too\" large."})");
  EXPECT_EQ(header(refused, "Cache-Control"), "no-store");
  EXPECT_NE(header(refused, "Content-Security-Policy"), "(absent)");
}

}  // namespace
}  // namespace settings
