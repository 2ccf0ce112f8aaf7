#include <atomic>
#include <functional>
#include <gtest/gtest.h>
#include <iterator>
#include <thread>

#include "platform/foundation/objects/MutableDictionary.h"
#include "platform/foundation/propertylist/PropertyList.h"
#include "platform/foundation/values/Exception.h"
#include "tests/support/TestProcess.h"

namespace platform {
namespace {

std::string nameOfException(const std::function<void()>& action) {
  try {
    action();
  } catch (const Exception& exception) {
    return exception.name();
  }
  return "nothing was raised";
}

TEST(MutableDictionary, ANoneValueRemoves) {
  MutableDictionary dictionary(Dictionary{{"a", 1}, {"b", 2}});
  dictionary.setValueForKey(Value(), Value("a"));
  EXPECT_EQ(dictionary.snapshot(), (Dictionary{{"b", 2}}));
  dictionary.setValueForKey(Value(), Value("absent"));
  EXPECT_EQ(dictionary.count(), 1U);
}

TEST(MutableDictionary, ANoneKeyRaisesOnWritingAndAnswersNoneOnReading) {
  MutableDictionary dictionary;
  EXPECT_TRUE(dictionary.valueForKey(Value()).isNone());
  EXPECT_EQ(nameOfException([&] { dictionary.setValueForKey(Value(1), Value()); }),
            "NSInvalidArgumentException");
  EXPECT_EQ(nameOfException([&] { dictionary.removeObjectForKey(Value()); }),
            "NSInvalidArgumentException");
}

TEST(MutableDictionary, AKeyThatIsNoStringRaises) {
  MutableDictionary dictionary;
  for (const Value& key : {Value(1), Value(Array{1}), Value(Data("x"))}) {
    EXPECT_EQ(nameOfException([&] { dictionary.setValueForKey(Value(1), key); }),
              "NSInvalidArgumentException");
    EXPECT_EQ(nameOfException([&] { dictionary.valueForKey(key); }), "NSInvalidArgumentException");
  }
}

// A key with "@" is sent to the dictionary itself, whatever its entries are.
TEST(MutableDictionary, AKeyWithASignIsOneOfTheDictionaryItself) {
  MutableDictionary dictionary(Dictionary{{"@count", "stored"}, {"@name", 1}, {"name", 2}});
  EXPECT_EQ(dictionary.valueForKey(Value("@count")), Value(3));
  EXPECT_EQ(dictionary.valueForKey("@count"), Value(3));
  EXPECT_EQ(nameOfException([&] { dictionary.valueForKey(Value("@name")); }),
            "NSUnknownKeyException");
  EXPECT_EQ(nameOfException([&] { dictionary.valueForKey("@"); }), "NSUnknownKeyException");
}

TEST(MutableDictionary, AKeyWithASignIsWrittenAsAnyOther) {
  MutableDictionary dictionary;
  dictionary.setValueForKey(Value(1), Value("@name"));
  EXPECT_EQ(dictionary.snapshot(), (Dictionary{{"@name", 1}}));
  dictionary.setValueForKey(Value(), Value("@name"));
  EXPECT_EQ(dictionary.count(), 0U);
}

TEST(MutableDictionary, KeepsObjectsThatNoPropertyListHolds) {
  MutableDictionary dictionary;
  const auto object = std::make_shared<Object>();
  dictionary.setValueForKey(Value(object), "object");
  EXPECT_EQ(dictionary.valueForKey("object").asObject(), object);
}

TEST(MutableDictionary, ASnapshotDoesNotChange) {
  MutableDictionary dictionary(Dictionary{{"a", 1}});
  const Dictionary before = dictionary.snapshot();
  dictionary.setValueForKey(Value(2), Value("a"));
  dictionary.setValueForKey(Value(3), Value("b"));
  EXPECT_EQ(before, (Dictionary{{"a", 1}}));
  EXPECT_EQ(dictionary.snapshot(), (Dictionary{{"a", 2}, {"b", 3}}));
  dictionary.replaceAll(before);
  EXPECT_EQ(dictionary.snapshot(), before);
  dictionary.removeObjectForKey(Value("a"));
  EXPECT_EQ(dictionary.count(), 0U);
}

// The destructor sets a value in the dictionary that held this object.
class Avenger : public Object {
 public:
  explicit Avenger(MutableDictionary& dictionary) : _dictionary(dictionary) {}
  ~Avenger() override { _dictionary.setValueForKey(Value("gone"), Value("state")); }

 private:
  MutableDictionary& _dictionary;
};

TEST(MutableDictionary, TheEndOfAReplacedObjectMayComeBack) {
  MutableDictionary dictionary;
  dictionary.setValueForKey(Value(std::make_shared<Avenger>(dictionary)), Value("object"));
  dictionary.setValueForKey(Value(1), Value("object"));
  EXPECT_EQ(dictionary.valueForKey("state"), Value("gone"));
  dictionary.removeObjectForKey(Value("state"));
  dictionary.setValueForKey(Value(std::make_shared<Avenger>(dictionary)), Value("object"));
  const Dictionary held = dictionary.snapshot().without("object");
  dictionary.removeObjectForKey(Value("object"));
  EXPECT_EQ(dictionary.valueForKey("state"), Value("gone"));
}

TEST(MutableDictionary, TwoThreadsSeeEachOperationWhole) {
  MutableDictionary dictionary(Dictionary{{"pair", Array{0, 0}}});
  std::atomic<bool> done = false;
  std::thread writer([&] {
    for (int i = 1; i <= 2000; ++i) {
      dictionary.setValueForKey(Value(Array{i, i}), Value("pair"));
      dictionary.setValueForKey(Value(i), Value("key" + std::to_string(i % 50)));
    }
    done = true;
  });
  while (!done) {
    const Value pair = dictionary.valueForKey("pair");
    ASSERT_EQ((*pair.asArray())[0], (*pair.asArray())[1]);
    const Dictionary snapshot = dictionary.snapshot();
    ASSERT_EQ(snapshot.size(),
              static_cast<std::size_t>(std::distance(snapshot.begin(), snapshot.end())));
  }
  writer.join();
  EXPECT_EQ(dictionary.count(), 51U);
}

TEST(MutableDictionary, TwoThreadsThatSetLoseNothing) {
  MutableDictionary dictionary;
  const auto work = [&dictionary](int first) {
    for (int i = first; i < 1000; i += 2) {
      dictionary.setValueForKey(Value(i), Value("key " + std::to_string(i)));
      if (i % 7 == 0) static_cast<void>(dictionary.snapshot());
    }
  };
  std::thread other(work, 1);
  work(0);
  other.join();
  EXPECT_EQ(dictionary.count(), 1000U);
}

TEST(MutableDictionary, TheFileEndsEqualToTheMemoryWhenTwoThreadsSetAndWrite) {
  test_support::TestProcess process;
  const std::string path = "/var/mobile/two.plist";
  process.tree().makeFolder("/var/mobile");
  MutableDictionary dictionary;
  const auto work = [&](int first) {
    const ProcessScope scope(process.process());
    for (int i = first; i < 60; i += 2) {
      dictionary.setValueForKey(Value(i), Value("key" + std::to_string(i)));
      ASSERT_TRUE(writeToFileAtomically(dictionary, path));
    }
  };
  std::thread other(work, 1);
  work(0);
  other.join();
  EXPECT_EQ(dictionaryWithContentsOfFile(path), dictionary.snapshot());
}

}  // namespace
}  // namespace platform
