#include "platform/qt/NSObject.h"
#include "platform/qt/PSSpecifier.h"

#include <gtest/gtest.h>

namespace {

class Animal : public NSObject {
    AMPWELL_OBJC_CLASS()
public:
    std::string sound() { return "..."; }
    std::string describe(std::string name, int legs) { return name + ":" + std::to_string(legs); }
    void remember(Id value) { remembered = value; }
    Id remembered;
};

class Dog : public Animal {
    AMPWELL_OBJC_CLASS()
public:
    std::string bark() { return "woof"; }
};

const ObjCClass& Animal::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<Animal>("TestAnimal", &NSObject::staticClass())
                                      .method("sound", &Animal::sound)
                                      .method("describe:legs:", &Animal::describe)
                                      .method("remember:", &Animal::remember)
                                      .build();
    return cls;
}

const ObjCClass& Dog::staticClass()
{
    static const ObjCClass& cls = ClassBuilder<Dog>("TestDog", &Animal::staticClass())
                                      .method("sound", &Dog::bark)
                                      .build();
    return cls;
}

TEST(ObjCClass, MethodsAreFoundByNameAlongTheSuperclassChain)
{
    Dog::staticClass();
    Dog dog;
    Animal animal;
    EXPECT_EQ(ObjCClass::named("TestDog"), &Dog::staticClass());
    EXPECT_EQ(ObjCClass::named("NoSuchClass"), nullptr);
    EXPECT_TRUE(dog.isKindOfClass(Animal::staticClass()));
    EXPECT_FALSE(animal.isKindOfClass(Dog::staticClass()));

    EXPECT_EQ(dog.perform<std::string>("sound"), "woof");
    EXPECT_EQ(animal.perform<std::string>("sound"), "...");
    EXPECT_TRUE(dog.respondsToSelector("describe:legs:"));
    EXPECT_FALSE(dog.respondsToSelector("fly"));
    EXPECT_TRUE(dog.performSelector("fly").isNil());

    // Missing arguments arrive as nil, surplus ones are dropped.
    EXPECT_EQ(dog.perform<std::string>("describe:legs:", {Id("rex"), Id(4), Id(9)}), "rex:4");
    EXPECT_EQ(dog.perform<std::string>("describe:legs:", {Id("rex")}), "rex:0");

    auto specifier = PSSpecifier::emptyGroupSpecifier();
    dog.performSelector("remember:", {Id(specifier)});
    EXPECT_EQ(dog.remembered.specifier(), specifier);
}

TEST(ObjCClass, MadeByNameWithTheirFactories)
{
    Dog::staticClass();
    std::unique_ptr<NSObject> made(ObjCClass::named("TestDog")->createInstance());
    ASSERT_TRUE(made);
    EXPECT_EQ(&made->isa(), &Dog::staticClass());
    EXPECT_EQ(ObjCClass::named("TestDog")->createCell(0, "", nullptr), nullptr);
}

TEST(NSDictionary, KeepsOrderAndRemovesOnNil)
{
    NSDictionary dictionary{{"b", 1}, {"a", "x"}, {"b", 2}};
    ASSERT_EQ(dictionary.size(), 2u);
    EXPECT_EQ(dictionary.begin()->first, "b");
    EXPECT_EQ(dictionary.value("b").integerValue(), 2);
    dictionary.set("a", Id());
    EXPECT_FALSE(dictionary.contains("a"));
}

} // namespace
