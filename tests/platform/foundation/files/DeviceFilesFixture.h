#pragma once

#include <gtest/gtest.h>
#include <memory>
#include <string>

#include "platform/foundation/files/DeviceFileSystem.h"
#include "tests/support/FaultySystemCalls.h"
#include "tests/support/TemporaryDeviceTree.h"

// The files of an empty tree, with system calls that can be made to fail. Runs every test with both
// ways of path resolution, by the kernel and step by step.
class DeviceFilesTest : public testing::TestWithParam<platform::PathResolution> {
 public:
  static auto bothResolutions() {
    return testing::Values(platform::PathResolution::automatic,
                           platform::PathResolution::stepByStep);
  }
  static std::string nameOf(const testing::TestParamInfo<platform::PathResolution>& each) {
    return each.param == platform::PathResolution::automatic ? "ByKernel" : "StepByStep";
  }

 protected:
  test_support::TemporaryDeviceTree _tree{test_support::TemporaryDeviceTree::Contents::empty};
  std::shared_ptr<test_support::FaultySystemCalls> _calls =
      std::make_shared<test_support::FaultySystemCalls>();
  platform::DeviceFileSystem _files{_tree.root(), _calls, GetParam()};
};
