#pragma once

#include "web/dom/ExceptionOr.h"
#include "web/script/Binding.h"
#include "web/script/JSCPrivate.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>

namespace script {

class RealmIsolation;

// One global object with everything a script can reach: the language's built-ins, the window
// and document, and the canvas interfaces. The engine keeps one realm for many documents; see
// RealmIsolation for how a document starts fresh in it.
class Realm {
public:
    explicit Realm(JSContextGroupRef group);
    ~Realm();
    Realm(const Realm&) = delete;
    Realm& operator=(const Realm&) = delete;

    // The realm a binding call runs in.
    static Realm& of(JSContextRef ctx);

    JSGlobalContextRef context() const { return ctx_; }
    JSObjectRef global() const { return global_; }
    JSContextGroupRef group() const { return group_; }

    // Runs a script as indirect eval: its value is the script's completion value, and its
    // let, const and class declarations stay its own instead of outliving it in the realm.
    JSValueRef evaluate(std::string_view source, JSValueRef* exception);

    // For "function<text>" when the text is one function expression exactly, and nothing more:
    // a function made once per text that gives a new function object of that expression each
    // time it is called. Null (and nothing has run) for any other text.
    JSObjectRef functionFactory(std::string_view text);
    // A strict function that calls its first argument, a function factory, and calls what that
    // gives with the `count` arguments after it, so that the callee sees `this` undefined and
    // no caller, as when a script calls it.
    JSObjectRef caller(std::size_t count);

    JSValueRef typeError(std::string_view message) const;
    JSValueRef rangeError(std::string_view message) const;
    // A DOMException, or the ECMAScript error its name stands for.
    JSValueRef error(const DOMException& exception);

    JSObjectRef prototypeOf(const InterfaceDefinition& interface) const;
    JSObjectRef interfaceObject(const InterfaceDefinition& interface) const;
    // A new platform object for `object`.
    JSObjectRef wrap(const InterfaceDefinition& interface, std::shared_ptr<void> object);
    // The platform object for `identity` while one is alive, else a new one: the same C++ object
    // keeps the same wrapper.
    JSObjectRef wrapCached(const InterfaceDefinition& interface, std::shared_ptr<void> object, const void* identity);
    void forgetIdentity(const void* identity);

    // Properties the collector traces but scripts cannot see, on our platform objects.
    JSValueRef hidden(JSObjectRef object, const char* name) const;
    void setHidden(JSObjectRef object, const char* name, JSValueRef value);

    JSValueRef iteratorSymbol() const { return iteratorSymbol_; }
    // The captured original of a built-in the bindings rely on ("TypeError", "define", ...).
    JSObjectRef intrinsics() const { return intrinsics_; }

    // The document scripts see as `document`, made on first use.
    JSObjectRef document();
    void dropDocument();

    RealmIsolation& isolation() { return *isolation_; }

    // Object.defineProperty with the original function, for setting up the realm.
    void defineValue(JSObjectRef object, JSValueRef key, JSValueRef value, bool writable, bool enumerable, bool configurable);
    void defineAccessor(JSObjectRef object, JSValueRef key, JSValueRef getter, JSValueRef setter, bool enumerable,
                        bool configurable);

private:
    void captureIntrinsics();
    void installInterface(const InterfaceDefinition& interface);
    void installWindow();
    JSObjectRef protect(JSObjectRef object);

    static Realm* current_;

    JSContextGroupRef group_;
    JSGlobalContextRef ctx_;
    JSObjectRef global_;
    JSObjectRef intrinsics_ = nullptr; // functions captured before any script ran
    JSObjectRef evalFunction_ = nullptr;
    JSObjectRef typeErrorConstructor_ = nullptr;
    JSObjectRef rangeErrorConstructor_ = nullptr;
    JSObjectRef defineHelper_ = nullptr;
    JSValueRef iteratorSymbol_ = nullptr;
    JSObjectRef document_ = nullptr;
    struct InterfaceObjects {
        JSObjectRef prototype;
        JSObjectRef interfaceObject;
    };
    std::unordered_map<const InterfaceDefinition*, InterfaceObjects> interfaces_;
    std::unordered_map<const void*, JSWeakRef> identities_;
    std::vector<JSObjectRef> protected_;
    // Looked up by the script's text without copying it for every call.
    struct TextHash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>()(text); }
    };
    std::unordered_map<std::string, JSObjectRef, TextHash, std::equal_to<>> functionFactories_; // null: not one expression
    std::unordered_map<std::size_t, JSObjectRef> callers_;
    std::unique_ptr<RealmIsolation> isolation_;
};

} // namespace script
