#include <gtest/gtest.h>

#include "platform/foundation/values/Exception.h"

namespace {

using platform::Exception;

template <class Raise>
Exception raisedBy(Raise raise) {
  try {
    raise();
  } catch (const Exception& exception) {
    return exception;
  }
  ADD_FAILURE() << "nothing was raised";
  return {"", ""};
}

TEST(Exception, SaysNameAndReason) {
  const Exception exception("NoDataException", "No data read from stdout");
  EXPECT_EQ(exception.name(), "NoDataException");
  EXPECT_EQ(exception.reason(), "No data read from stdout");
  EXPECT_STREQ(exception.what(), "NoDataException: No data read from stdout");
}

TEST(Exception, UnrecognizedSelectorsNameClassAndSelector) {
  const Exception instance =
      raisedBy([] { platform::raiseUnrecognizedSelector("HBPreferences", "setFloat:forKey:"); });
  EXPECT_EQ(instance.name(), "NSInvalidArgumentException");
  EXPECT_EQ(instance.reason(),
            "-[HBPreferences setFloat:forKey:]: unrecognized selector sent to instance");
  const Exception type = raisedBy([] { platform::raiseUnrecognizedClassSelector("A", "b"); });
  EXPECT_EQ(type.reason(), "+[A b]: unrecognized selector sent to class");
}

TEST(Exception, UndefinedKeysNameClassAndKey) {
  const Exception reading = raisedBy([] { platform::raiseUndefinedKey("A", "k", false); });
  EXPECT_EQ(reading.name(), "NSUnknownKeyException");
  EXPECT_EQ(reading.reason(),
            "[<A> valueForUndefinedKey:]: this class is not key value coding-compliant for the "
            "key k.");
  const Exception writing = raisedBy([] { platform::raiseUndefinedKey("A", "k", true); });
  EXPECT_EQ(writing.reason(),
            "[<A> setValue:forUndefinedKey:]: this class is not key value coding-compliant for "
            "the key k.");
}

}  // namespace
