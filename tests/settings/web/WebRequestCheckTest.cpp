#include <gtest/gtest.h>
#include <string>

#include "settings/web/RandomToken.h"
#include "settings/web/RequestCheck.h"

namespace settings {
namespace {

const AccessRules rules{8080, {"the-token", "the-session"}};

RequestFacts request(std::string host) {
  RequestFacts facts;
  facts.method = "GET";
  facts.target = "/";
  facts.hosts = {std::move(host)};
  return facts;
}

TEST(RequestCheck, GrantsTheLoopbackAddressAndItsName) {
  EXPECT_EQ(checkHostAndOrigin(request("127.0.0.1:8080"), rules), Access::granted);
  EXPECT_EQ(checkHostAndOrigin(request("localhost:8080"), rules), Access::granted);
}

TEST(RequestCheck, RefusesEveryOtherHost) {
  for (const char* host : {"example.com:8080", "127.0.0.1", "127.0.0.1:8081", "127.0.0.1:80801",
                           "127.0.0.1.example.com:8080", "LOCALHOST:8080", "localhost:8080.",
                           "[::1]:8080", "0.0.0.0:8080", " 127.0.0.1:8080", ""}) {
    EXPECT_EQ(checkHostAndOrigin(request(host), rules), Access::wrongHost) << host;
  }
}

TEST(RequestCheck, TakesTheHostWithoutAPortOnPort80Only) {
  AccessRules onDefaultPort = rules;
  onDefaultPort.port = 80;
  EXPECT_EQ(checkHostAndOrigin(request("localhost"), onDefaultPort), Access::granted);
  EXPECT_EQ(checkHostAndOrigin(request("localhost"), rules), Access::wrongHost);
}

TEST(RequestCheck, RefusesNoHostAndTwoHosts) {
  RequestFacts facts = request("127.0.0.1:8080");
  facts.hosts.clear();
  EXPECT_EQ(checkHostAndOrigin(facts, rules), Access::badRequest);
  facts.hosts = {"127.0.0.1:8080", "127.0.0.1:8080"};
  EXPECT_EQ(checkHostAndOrigin(facts, rules), Access::badRequest);
}

TEST(RequestCheck, AnOriginIsExactlyTheHostThatWasAskedFor) {
  RequestFacts facts = request("127.0.0.1:8080");
  facts.origins = {"http://127.0.0.1:8080"};
  EXPECT_EQ(checkHostAndOrigin(facts, rules), Access::granted);
  for (const char* origin :
       {"http://localhost:8080", "https://127.0.0.1:8080", "http://127.0.0.1:8080/", "null",
        "http://127.0.0.1:8080.example.com", "http://127.0.0.1", ""}) {
    facts.origins = {origin};
    EXPECT_EQ(checkHostAndOrigin(facts, rules), Access::wrongOrigin) << origin;
  }
  facts.origins = {"http://127.0.0.1:8080", "http://127.0.0.1:8080"};
  EXPECT_EQ(checkHostAndOrigin(facts, rules), Access::badRequest);
}

TEST(RequestCheck, AWebSocketNeedsAnOrigin) {
  RequestFacts facts = request("127.0.0.1:8080");
  facts.wantsSocket = true;
  EXPECT_EQ(checkHostAndOrigin(facts, rules), Access::missingOrigin);
}

TEST(RequestCheck, TheSessionIsFoundAmongOtherCookies) {
  RequestFacts facts = request("127.0.0.1:8080");
  EXPECT_FALSE(hasSession(facts, rules));
  facts.cookies = {"a=b; zentrova-session-8080=the-session; c=d"};
  EXPECT_TRUE(hasSession(facts, rules));
  facts.cookies = {"a=b", "zentrova-session-8080=the-session"};
  EXPECT_TRUE(hasSession(facts, rules));
}

TEST(RequestCheck, NoOtherCookieIsTheSession) {
  RequestFacts facts = request("127.0.0.1:8080");
  for (const char* cookie :
       {"zentrova-session-8080=the-token", "zentrova-session-8080=", "zentrova-session-8080",
        "zentrova-session-8081=the-session", "zentrova-session-8080=the-session2",
        "xzentrova-session-8080=the-session", "zentrova-session-8080=the-sessio", ";;;"}) {
    facts.cookies = {cookie};
    EXPECT_FALSE(hasSession(facts, rules)) << cookie;
  }
}

TEST(RequestCheck, TheCookieIsForThisSiteAloneAndHiddenFromScripts) {
  const std::string cookie = sessionCookie(rules);
  EXPECT_EQ(cookie, "zentrova-session-8080=the-session; Path=/; HttpOnly; SameSite=Strict");
}

TEST(RequestCheck, FindsAParameterOfTheQuery) {
  EXPECT_EQ(queryParameter("/?a=1&token=x", "token"), "x");
  EXPECT_EQ(queryParameter("/?token=", "token"), "");
  EXPECT_EQ(queryParameter("/?token", "token"), std::nullopt);
  EXPECT_EQ(queryParameter("/?xtoken=1", "token"), std::nullopt);
  EXPECT_EQ(queryParameter("/token=1", "token"), std::nullopt);
  EXPECT_EQ(targetPath("/a?b=c?d"), "/a");
}

TEST(RandomToken, Has256BitsAndNeverRepeats) {
  const auto first = randomToken();
  const auto second = randomToken();
  ASSERT_TRUE(first && second);
  EXPECT_EQ(first->size(), 64U);
  EXPECT_EQ(first->find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_NE(*first, *second);
}

TEST(RandomToken, SecretsAreEqualOnlyAsAWhole) {
  EXPECT_TRUE(sameSecret("abc", "abc"));
  EXPECT_FALSE(sameSecret("abd", "abc"));
  EXPECT_FALSE(sameSecret("ab", "abc"));
  EXPECT_FALSE(sameSecret("abcd", "abc"));
  EXPECT_FALSE(sameSecret("", "abc"));
}

}  // namespace
}  // namespace settings
