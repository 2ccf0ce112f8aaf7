#include <future>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "settings/web/MainLoop.h"

namespace settings {
namespace {

TEST(MainLoop, RunsWorkInOrderAndThenTheStep) {
  MainLoop loop;
  std::string order;
  loop.post([&] { order += "a"; });
  loop.post([&] { order += "b"; });
  loop.run([&]() -> std::optional<double> {
    order += "s";
    loop.stop();
    return std::nullopt;
  });
  EXPECT_EQ(order, "abs");
}

TEST(MainLoop, AWakeRunsTheStepAgain) {
  MainLoop loop;
  int steps = 0;
  std::promise<void> stepped;
  std::thread other([&] {
    stepped.get_future().wait();
    loop.wake();
  });
  loop.run([&]() -> std::optional<double> {
    if (++steps == 1) stepped.set_value();
    if (steps == 2) loop.stop();
    return std::nullopt;
  });
  other.join();
  EXPECT_EQ(steps, 2);
}

TEST(MainLoop, WorkFromManyThreadsAllRuns) {
  MainLoop loop;
  int done = 0;
  constexpr int each = 200;
  std::vector<std::thread> threads;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&] {
      for (int piece = 0; piece < each; ++piece) {
        loop.post([&] {
          if (++done == 4 * each) loop.stop();
        });
      }
    });
  }
  loop.run([]() -> std::optional<double> { return std::nullopt; });
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(done, 4 * each);
}

TEST(MainLoop, WhatFallsDueRunsTheStepAgain) {
  MainLoop loop;
  int steps = 0;
  loop.run([&]() -> std::optional<double> {
    if (++steps == 3) loop.stop();
    return 0.001;
  });
  EXPECT_EQ(steps, 3);
}

TEST(MainLoop, AStopBeforeTheRunEndsItAtOnceAndDropsWork) {
  MainLoop loop;
  loop.post([] { FAIL() << "dropped work ran"; });
  loop.stop();
  loop.post([] { FAIL() << "work after the stop ran"; });
  loop.run([]() -> std::optional<double> {
    ADD_FAILURE() << "a step ran";
    return std::nullopt;
  });
}

}  // namespace
}  // namespace settings
