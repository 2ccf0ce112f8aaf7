#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "settings/web/SendQueue.h"

namespace settings {
namespace {

OutgoingMessage ordinary(std::string text) {
  return {std::make_shared<const std::string>(std::move(text)), false};
}

OutgoingMessage whole(std::string text) {
  return {std::make_shared<const std::string>(std::move(text)), true};
}

std::string taken(SendQueue& queue) {
  const auto text = queue.front();
  if (!text) return "(nothing)";
  queue.pop();
  return *text;
}

TEST(SendQueue, SendsInOrder) {
  SendQueue queue;
  queue.push(ordinary("a"));
  queue.push(ordinary("b"));
  EXPECT_EQ(taken(queue), "a");
  EXPECT_EQ(taken(queue), "b");
  EXPECT_EQ(taken(queue), "(nothing)");
  EXPECT_FALSE(queue.takeWantsWhole());
}

TEST(SendQueue, DropsWhatWaitsWhenAPageDoesNotRead) {
  SendQueue queue({.messages = 3, .bytes = 1000});
  for (const char* text : {"a", "b", "c", "d"}) queue.push(ordinary(text));
  EXPECT_TRUE(queue.isLagging());
  // The first message may be partly sent.
  EXPECT_FALSE(queue.takeWantsWhole());
  EXPECT_EQ(taken(queue), "a");
  EXPECT_EQ(taken(queue), "(nothing)");
}

TEST(SendQueue, BoundsTheBytesToo) {
  SendQueue queue({.messages = 100, .bytes = 10});
  queue.push(ordinary("123456"));
  queue.push(ordinary("1234"));
  EXPECT_FALSE(queue.isLagging());
  queue.push(ordinary("1"));
  EXPECT_TRUE(queue.isLagging());
}

TEST(SendQueue, AMessageAloneMayBeLargerThanTheBound) {
  SendQueue queue({.messages = 100, .bytes = 10});
  queue.push(ordinary("12345678901"));
  EXPECT_FALSE(queue.isLagging());
}

TEST(SendQueue, ALaggingPageAsksOnceForAWholeTree) {
  SendQueue queue({.messages = 1, .bytes = 1000});
  queue.push(ordinary("a"));
  queue.push(ordinary("b"));
  EXPECT_EQ(taken(queue), "a");
  EXPECT_TRUE(queue.takeWantsWhole());
  EXPECT_FALSE(queue.takeWantsWhole());
}

TEST(SendQueue, ALaggingPageGetsNothingBeforeAWholeTree) {
  SendQueue queue({.messages = 1, .bytes = 1000});
  queue.push(ordinary("a"));
  queue.push(ordinary("b"));
  queue.push(ordinary("c"));
  EXPECT_EQ(taken(queue), "a");
  queue.push(ordinary("d"));
  EXPECT_EQ(queue.front(), nullptr);
  queue.push(whole("tree"));
  EXPECT_FALSE(queue.isLagging());
  EXPECT_EQ(taken(queue), "tree");
  queue.push(ordinary("e"));
  EXPECT_EQ(taken(queue), "e");
}

TEST(SendQueue, APageMayLagAgain) {
  SendQueue queue({.messages = 1, .bytes = 1000});
  for (int round = 0; round < 2; ++round) {
    queue.push(ordinary("a"));
    queue.push(ordinary("b"));
    EXPECT_EQ(taken(queue), "a");
    EXPECT_TRUE(queue.takeWantsWhole());
    queue.push(whole("tree"));
    EXPECT_EQ(taken(queue), "tree");
  }
}

}  // namespace
}  // namespace settings
