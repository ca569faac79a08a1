#pragma once

#include "platform/core/PlistValue.h"
#include "platform/core/UIImage.h"

#include <QPointer>
#include <QWidget>

#include <functional>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <variant>
#include <vector>

class ObjCClass;
class NSObject;
class NSDictionary;
class PSSpecifier;
class PSTableCell;

using NSArray = std::vector<class Id>;

// Any object a page hands around by name: a property-list value (which covers text,
// numbers, colours, arrays and dictionaries), an image, a class, a view, a page entry, or
// an array or dictionary of such objects. A default Id is nil.
class Id {
public:
    Id() = default;
    Id(PlistValue value) : v_(std::move(value)) {}
    Id(const char* text) : v_(PlistValue(text)) {}
    Id(std::string text) : v_(PlistValue(std::move(text))) {}
    Id(std::string_view text) : v_(PlistValue(text)) {}
    Id(bool value) : v_(PlistValue(value)) {}
    Id(int value) : v_(PlistValue(value)) {}
    Id(std::int64_t value) : v_(PlistValue(value)) {}
    Id(double value) : v_(PlistValue(value)) {}
    Id(float value) : v_(PlistValue(value)) {}
    Id(UIColor value) : v_(PlistValue(value)) {}
    Id(PlistArray value) : v_(PlistValue(std::move(value))) {}
    Id(PlistDict value) : v_(PlistValue(std::move(value))) {}
    Id(UIImage image);
    Id(const ObjCClass* cls);
    Id(QWidget* view);
    Id(std::shared_ptr<PSSpecifier> specifier);
    Id(NSArray array);
    Id(NSDictionary dictionary);

    bool isNil() const;
    explicit operator bool() const { return !isNil(); }

    const PlistValue* plist() const { return std::get_if<PlistValue>(&v_); }
    // The property-list value, or nil for any other object.
    PlistValue plistValue() const { return plist() ? *plist() : PlistValue(); }
    const std::string* string() const { return plist() ? plist()->asString() : nullptr; }
    std::optional<UIColor> color() const;
    const UIImage* image() const { return std::get_if<UIImage>(&v_); }
    const ObjCClass* cls() const;
    QWidget* view() const;
    std::shared_ptr<PSSpecifier> specifier() const;
    const NSArray* array() const;
    const NSDictionary* dictionary() const;

    // The platform's number conversions (0 / false for objects that are not numbers or text).
    bool boolValue() const { return plist() && plist()->boolValue(); }
    std::int64_t integerValue() const { return plist() ? plist()->integerValue() : 0; }
    double doubleValue() const { return plist() ? plist()->doubleValue() : 0; }
    float floatValue() const { return static_cast<float>(doubleValue()); }

    bool operator==(const Id& other) const;

private:
    std::variant<std::monostate, PlistValue, UIImage, const ObjCClass*, QPointer<QWidget>,
                 std::shared_ptr<PSSpecifier>, std::shared_ptr<const NSArray>, std::shared_ptr<const NSDictionary>>
        v_;
};

// A dictionary of objects with string keys, in insertion order: an entry of a page table,
// or the properties of a page entry.
class NSDictionary {
public:
    using Entry = std::pair<std::string, Id>;
    NSDictionary() = default;
    NSDictionary(std::initializer_list<Entry> entries);

    const Id* find(std::string_view key) const;
    Id value(std::string_view key) const;
    bool contains(std::string_view key) const { return find(key) != nullptr; }
    // Setting nil removes the key.
    void set(std::string_view key, Id value);
    void remove(std::string_view key);
    std::size_t size() const { return entries_.size(); }
    bool empty() const { return entries_.empty(); }
    auto begin() const { return entries_.begin(); }
    auto end() const { return entries_.end(); }
    bool operator==(const NSDictionary&) const = default;

private:
    std::vector<Entry> entries_;
};

// A page's entry table: one dictionary per row or group heading.
using EntryTable = std::vector<NSDictionary>;

// Conversions between C++ values and Id, used to call methods by name.
template <typename T>
struct IdCast;
template <>
struct IdCast<Id> {
    static Id from(const Id& id) { return id; }
    static Id to(const Id& id) { return id; }
};
template <>
struct IdCast<bool> {
    static bool from(const Id& id) { return id.boolValue(); }
    static Id to(bool value) { return Id(value); }
};
template <>
struct IdCast<int> {
    static int from(const Id& id) { return static_cast<int>(id.integerValue()); }
    static Id to(int value) { return Id(value); }
};
template <>
struct IdCast<double> {
    static double from(const Id& id) { return id.doubleValue(); }
    static Id to(double value) { return Id(value); }
};
template <>
struct IdCast<float> {
    static float from(const Id& id) { return id.floatValue(); }
    static Id to(float value) { return Id(value); }
};
template <>
struct IdCast<std::string> {
    static std::string from(const Id& id) { return id.string() ? *id.string() : std::string(); }
    static Id to(const std::string& value) { return Id(value); }
};
template <>
struct IdCast<std::optional<std::string>> {
    static std::optional<std::string> from(const Id& id)
    {
        return id.string() ? std::optional<std::string>(*id.string()) : std::nullopt;
    }
    static Id to(const std::optional<std::string>& value) { return value ? Id(*value) : Id(); }
};
template <>
struct IdCast<PlistValue> {
    static PlistValue from(const Id& id) { return id.plistValue(); }
    static Id to(const PlistValue& value) { return Id(value); }
};
template <>
struct IdCast<UIColor> {
    static UIColor from(const Id& id) { return id.color().value_or(UIColor()); }
    static Id to(const UIColor& value) { return Id(value); }
};
template <>
struct IdCast<std::optional<UIColor>> {
    static std::optional<UIColor> from(const Id& id) { return id.color(); }
    static Id to(const std::optional<UIColor>& value) { return value ? Id(*value) : Id(); }
};
template <>
struct IdCast<UIImage> {
    static UIImage from(const Id& id) { return id.image() ? *id.image() : UIImage(); }
    static Id to(const UIImage& value) { return Id(value); }
};
template <>
struct IdCast<QWidget*> {
    static QWidget* from(const Id& id) { return id.view(); }
    static Id to(QWidget* value) { return Id(value); }
};
template <>
struct IdCast<std::shared_ptr<PSSpecifier>> {
    static std::shared_ptr<PSSpecifier> from(const Id& id) { return id.specifier(); }
    static Id to(const std::shared_ptr<PSSpecifier>& value) { return Id(value); }
};
template <>
struct IdCast<NSArray> {
    static NSArray from(const Id& id) { return id.array() ? *id.array() : NSArray(); }
    static Id to(const NSArray& value) { return Id(value); }
};
template <>
struct IdCast<NSDictionary> {
    static NSDictionary from(const Id& id);
    static Id to(const NSDictionary& value);
};
template <>
struct IdCast<EntryTable> {
    static EntryTable from(const Id& id);
    static Id to(const EntryTable& table);
};
// Text arrays travel as property-list arrays of strings, as a data source returns them.
template <>
struct IdCast<std::vector<std::string>> {
    static std::vector<std::string> from(const Id& id);
    static Id to(const std::vector<std::string>& value);
};

// A class known by name: its superclass, its method table (selector name -> callable) and
// how to make an instance. Lookups by name and responds-to tests walk the superclass chain,
// so a subclass overrides a method by registering the same name.
class ObjCClass {
public:
    using Method = std::function<Id(NSObject& self, const std::vector<Id>& arguments)>;
    using CellFactory =
        std::function<PSTableCell*(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier>)>;

    ObjCClass(std::string name, const ObjCClass* superclass) : name_(std::move(name)), superclass_(superclass) {}

    const std::string& name() const { return name_; }
    const ObjCClass* superclass() const { return superclass_; }
    const Method* methodForSelector(std::string_view selector) const;
    bool instancesRespondToSelector(std::string_view selector) const { return methodForSelector(selector); }
    bool isSubclassOfClass(const ObjCClass& other) const;

    // A new instance made by its default constructor (pages), or null when the class has none.
    NSObject* createInstance() const { return make_ ? make_() : nullptr; }
    // A new cell of this class, or null when the class is no cell.
    PSTableCell* createCell(int style, const std::string& reuseIdentifier, std::shared_ptr<PSSpecifier> specifier) const;

    void addMethod(std::string selector, Method method) { methods_[std::move(selector)] = std::move(method); }
    void setFactory(std::function<NSObject*()> make) { make_ = std::move(make); }
    void setCellFactory(CellFactory make) { makeCell_ = std::move(make); }

    // The class registered under the name, or null: the platform's NSClassFromString.
    static const ObjCClass* named(std::string_view name);
    static void registerClass(const ObjCClass* cls);

private:
    std::string name_;
    const ObjCClass* superclass_;
    std::unordered_map<std::string, Method> methods_;
    std::function<NSObject*()> make_;
    CellFactory makeCell_;
};

// The root of every object that is asked for methods by name.
class NSObject {
public:
    virtual ~NSObject() = default;
    virtual const ObjCClass& isa() const;
    static const ObjCClass& staticClass();

    bool respondsToSelector(std::string_view selector) const { return isa().instancesRespondToSelector(selector); }
    bool isKindOfClass(const ObjCClass& cls) const { return isa().isSubclassOfClass(cls); }
    // Calls the method registered for the selector; nil when the class has none. Missing
    // arguments are nil, surplus ones are ignored.
    Id performSelector(std::string_view selector, const std::vector<Id>& arguments = {});
    template <typename R>
    R perform(std::string_view selector, const std::vector<Id>& arguments = {})
    {
        return IdCast<R>::from(performSelector(selector, arguments));
    }
};

// Declares the class's metadata in a class body.
#define AMPWELL_OBJC_CLASS()                                                                                          \
public:                                                                                                              \
    static const ObjCClass& staticClass();                                                                           \
    const ObjCClass& isa() const override { return staticClass(); }

namespace objc_detail {

template <typename T, typename F, typename R, typename... A, std::size_t... I>
Id call(T& object, F fn, const std::vector<Id>& args, std::index_sequence<I...>)
{
    static const Id nil;
    auto arg = [&](std::size_t i) -> const Id& { return i < args.size() ? args[i] : nil; };
    (void)arg;
    if constexpr (std::is_void_v<R>) {
        (object.*fn)(IdCast<std::decay_t<A>>::from(arg(I))...);
        return Id();
    } else {
        return IdCast<std::decay_t<R>>::to((object.*fn)(IdCast<std::decay_t<A>>::from(arg(I))...));
    }
}

} // namespace objc_detail

// Builds and registers a class: ClassBuilder<T>("Name", &Base::staticClass()).method(...).build().
template <typename T>
class ClassBuilder {
public:
    ClassBuilder(std::string name, const ObjCClass* superclass) : cls_(new ObjCClass(std::move(name), superclass)) {}

    template <typename C, typename R, typename... A>
    ClassBuilder& method(std::string selector, R (C::*fn)(A...))
    {
        return add<C, decltype(fn), R, A...>(std::move(selector), fn);
    }
    template <typename C, typename R, typename... A>
    ClassBuilder& method(std::string selector, R (C::*fn)(A...) const)
    {
        return add<C, decltype(fn), R, A...>(std::move(selector), fn);
    }
    // A method given as a callable on the object.
    ClassBuilder& function(std::string selector, std::function<Id(T&, const std::vector<Id>&)> fn)
    {
        cls_->addMethod(std::move(selector), [fn = std::move(fn)](NSObject& self, const std::vector<Id>& args) -> Id {
            T* object = dynamic_cast<T*>(&self);
            return object ? fn(*object, args) : Id();
        });
        return *this;
    }

    const ObjCClass& build()
    {
        if constexpr (std::is_constructible_v<T, int, const std::string&, std::shared_ptr<PSSpecifier>>)
            cls_->setCellFactory([](int style, const std::string& reuse, std::shared_ptr<PSSpecifier> specifier) {
                T* cell = new T(style, reuse, std::move(specifier));
                // Parts that ask overridable methods are built once the object is whole.
                cell->didFinishInitialising();
                return static_cast<PSTableCell*>(cell);
            });
        else if constexpr (std::is_default_constructible_v<T> && !std::is_abstract_v<T>)
            cls_->setFactory([] { return static_cast<NSObject*>(new T()); });
        ObjCClass::registerClass(cls_);
        return *cls_;
    }

private:
    template <typename C, typename F, typename R, typename... A>
    ClassBuilder& add(std::string selector, F fn)
    {
        static_assert(std::is_base_of_v<C, T>, "the method must belong to the class or a base");
        cls_->addMethod(std::move(selector), [fn](NSObject& self, const std::vector<Id>& args) -> Id {
            T* object = dynamic_cast<T*>(&self);
            if (!object)
                return Id();
            return objc_detail::call<C, F, R, A...>(*object, fn, args, std::index_sequence_for<A...>{});
        });
        return *this;
    }

    ObjCClass* cls_;
};
