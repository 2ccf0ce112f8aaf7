#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

#include "platform/foundation/FoundationClasses.h"
#include "platform/foundation/objects/ClassBuilder.h"
#include "platform/foundation/objects/Process.h"

namespace {

using platform::Class;
using platform::ClassBuilder;
using platform::ClassRegistry;
using platform::Exception;
using platform::Object;
using platform::Value;

class Animal : public Object {
  PLATFORM_CLASS(Animal)

 public:
  virtual std::string sound() const { return "..."; }
  std::string kind() const { return "animal"; }
  static std::int64_t height() { return 44; }
  bool initWithLegs(std::int64_t legs) { return legs == 4; }
};

class Cat : public Animal {
  PLATFORM_CLASS(Cat)

 public:
  std::string sound() const override { return "meow"; }
  std::string kind() const { return "cat"; }
  static std::int64_t height() { return 30; }
};

class Shape : public Object {
  PLATFORM_CLASS(Shape)

 public:
  virtual double area() const = 0;
};

class Shy : public Object {
  PLATFORM_CLASS(Shy)

 public:
  bool init() override { return false; }
};

Class animalClass() {
  return ClassBuilder<Animal>("NSObject")
      .operation("sound", &Animal::sound)
      .operation("kind", &Animal::kind)
      .operation("initWithLegs:", &Animal::initWithLegs)
      .classOperation("height", &Animal::height)
      .build();
}

Class catClass() {
  return ClassBuilder<Cat>("Animal")
      .operation("kind", &Cat::kind)
      .classOperation("height", &Cat::height)
      .build();
}

std::string reasonOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const Exception& exception) {
    EXPECT_EQ(exception.name(), "NSInvalidArgumentException");
    return exception.reason();
  }
  return "nothing was raised";
}

TEST(ClassRegistry, HoldsTheRootClass) {
  ClassRegistry classes;
  ASSERT_NE(classes.find("NSObject"), nullptr);
  EXPECT_EQ(classes.find("NSObject")->base(), nullptr);
}

TEST(ClassRegistry, FindsByNameAndGivesNothingForAnUnknownOne) {
  ClassRegistry classes;
  classes.add(animalClass());
  ASSERT_NE(classes.find("Animal"), nullptr);
  EXPECT_EQ(classes.find("Animal")->name(), "Animal");
  EXPECT_EQ(classes.find("Dog"), nullptr);
}

TEST(ClassRegistry, RefusesANameGivenTwice) {
  ClassRegistry classes;
  classes.add(animalClass());
  EXPECT_EQ(reasonOf([&] { classes.add(animalClass()); }),
            "a class named Animal is already registered");
}

TEST(ClassRegistry, RefusesAnUnknownBaseClass) {
  ClassRegistry classes;
  EXPECT_EQ(reasonOf([&] { classes.add(catClass()); }),
            "the base class Animal of Cat is not registered");
}

TEST(ClassRegistry, ARemovedClassStillAnswersForItsObjects) {
  platform::Process process;
  const platform::ProcessScope scope(process);
  process.classes().add(animalClass());
  const auto animal = process.classes().find("Animal")->makeInstance();
  process.classes().remove("Animal");
  process.classes().remove("Nobody");
  EXPECT_EQ(process.classes().find("Animal"), nullptr);
  EXPECT_EQ(animal->objectClass().name(), "Animal");
  EXPECT_EQ(animal->perform("sound"), Value("..."));
}

TEST(ClassRegistry, ARemovedNameCanBeGivenAgain) {
  ClassRegistry classes;
  classes.add(animalClass());
  classes.remove("Animal");
  EXPECT_NO_THROW(classes.add(animalClass()));
  EXPECT_NE(classes.find("Animal"), nullptr);
}

TEST(ClassRegistry, NamesAreSorted) {
  ClassRegistry classes;
  classes.add(animalClass());
  classes.add(catClass());
  EXPECT_THAT(classes.names(), testing::ElementsAre("Animal", "Cat", "NSObject"));
}

TEST(Class, KnowsWhatItDescendsFrom) {
  ClassRegistry classes;
  classes.add(animalClass());
  const Class& cat = classes.add(catClass());
  EXPECT_TRUE(cat.isSubclassOf("Cat"));
  EXPECT_TRUE(cat.isSubclassOf("NSObject"));
  EXPECT_FALSE(classes.find("Animal")->isSubclassOf("Cat"));
}

TEST(Class, ASubclassInheritsAndReplacesOperations) {
  platform::Process process;
  const platform::ProcessScope scope(process);
  process.classes().add(animalClass());
  const auto cat = process.classes().add(catClass()).makeInstance();
  EXPECT_EQ(cat->perform("sound"), Value("meow"));
  EXPECT_EQ(cat->perform("kind"), Value("cat"));
}

TEST(Class, AClassOperationIsSentThroughTheClassObject) {
  ClassRegistry classes;
  const Class& animal = classes.add(animalClass());
  const Class& cat = classes.add(catClass());
  EXPECT_EQ(animal.perform("height"), Value(44));
  EXPECT_EQ(cat.perform("height"), Value(30));
  EXPECT_TRUE(cat.respondsToSelector("height"));
  EXPECT_EQ(reasonOf([&] { animal.perform("width"); }),
            "+[Animal width]: unrecognized selector sent to class");
}

TEST(Class, AnAbstractClassHasNoInstances) {
  ClassRegistry classes;
  const Class& shape = classes.add(ClassBuilder<Shape>("NSObject").build());
  EXPECT_EQ(reasonOf([&] { shape.allocate(); }),
            "+[Shape alloc]: an abstract class has no instances");
}

TEST(Class, MakeInstanceGivesNothingWhereTheInitialiserRefuses) {
  ClassRegistry classes;
  EXPECT_FALSE(classes.add(ClassBuilder<Shy>("NSObject").build()).makeInstance());
}

TEST(Class, OneTypeCanStandForSeveralNames) {
  platform::Process process;
  const platform::ProcessScope scope(process);
  process.classes().add(animalClass());
  const Class& dog = process.classes().add(ClassBuilder<Animal>("Dog", "Animal").build());
  const auto instance = dog.allocateAs<Animal>();
  ASSERT_TRUE(instance);
  EXPECT_EQ(&instance->objectClass(), &dog);
}

TEST(MakeNamed, MakesAnObjectOfTheCurrentProcesssClass) {
  platform::Process process;
  const platform::ProcessScope scope(process);
  process.classes().add(animalClass());
  EXPECT_EQ(platform::NSClassFromString("Animal"), process.classes().find("Animal"));
  const auto animal = platform::makeNamed<Animal>("Animal");
  ASSERT_TRUE(animal);
  EXPECT_EQ(animal->objectClass().name(), "Animal");
  EXPECT_TRUE(platform::makeNamed<Animal>("Animal", "initWithLegs:", {4}));
}

TEST(MakeNamed, GivesNothingWithoutAClassOrAnInitialisedObjectOfTheType) {
  platform::Process process;
  const platform::ProcessScope scope(process);
  process.classes().add(animalClass());
  process.classes().add(ClassBuilder<Shy>("NSObject").build());
  EXPECT_FALSE(platform::makeNamed<Animal>("Nobody"));
  EXPECT_FALSE(platform::makeNamed<Animal>("Nobody", "initWithLegs:", {4}));
  EXPECT_FALSE(platform::makeNamed<Shy>("Shy"));
  EXPECT_FALSE(platform::makeNamed<Cat>("Animal"));
  EXPECT_FALSE(platform::makeNamed<Animal>("Animal", "initWithLegs:", {5}));
}

TEST(FoundationClasses, AreFoundByName) {
  ClassRegistry classes;
  platform::registerFoundationClasses(classes);
  for (const char* name :
       {"NSMutableDictionary", "NSTask", "NSPipe", "NSFileHandle", "NSNotificationCenter"}) {
    ASSERT_NE(classes.find(name), nullptr) << name;
    EXPECT_TRUE(classes.find(name)->makeInstance() || std::string(name) == "NSFileHandle");
  }
}

}  // namespace
