#pragma once

#include <JavaScriptCore/JavaScript.h>

#include <unordered_set>
#include <vector>

namespace script {

class Realm;

// How a realm is used for document after document. Making a global object costs milliseconds,
// a render must cost a fraction of one, so documents share the realm and each new document
// gets it back as it was:
//
// - Once, when the realm is made, every object reachable from the global object and from the
//   intrinsics scripts reach by syntax alone is recorded, and a check compares their own
//   properties with the record: the list of own keys, in order (a key added, deleted, or
//   deleted and assigned again, which puts it last), the values of everything a script can
//   assign, and, where keys deleted and assigned again in order would leave the list as it was,
//   what the last of them was (not enumerable, an accessor, read-only). Built-in functions
//   that have nothing a script could assign (methods with their name and length, nine in ten
//   of the objects, and constructors with nothing but read-only properties) are frozen instead
//   of checked: comparing them every time would cost more than the rest of the check together.
// - What the check cannot see (a property made non-writable or into an accessor, a changed
//   prototype, a frozen object) can only be done through a handful of built-ins
//   (Object.defineProperty, setPrototypeOf, freeze, Reflect.deleteProperty, ...). These are
//   wrapped; used on a recorded object, they mark the realm spoiled.
// - The global object is compared key by key; what scripts added to it is deleted and what
//   they changed is put back. Anything that cannot be put back spoils the realm, and the
//   engine then makes a new one.
class RealmIsolation {
public:
    explicit RealmIsolation(Realm& realm);
    ~RealmIsolation();
    RealmIsolation(const RealmIsolation&) = delete;
    RealmIsolation& operator=(const RealmIsolation&) = delete;

    enum class Outcome { Clean, Restored, Spoiled };
    Outcome reset();

    enum class Change { Descriptors, Shape };
    // From the guards: `target` is about to get changed property descriptors or a changed
    // prototype or extensibility.
    void noteChange(JSValueRef target, Change change);
    JSObjectRef original(int guard) const { return originals_[guard]; }

private:
    void installGuards();
    void takeSnapshot();

    Realm& realm_;
    JSContextRef ctx_;
    std::unordered_set<JSObjectRef> watched_;
    std::vector<JSObjectRef> originals_;
    JSObjectRef check_ = nullptr;
    JSObjectRef restore_ = nullptr;
    bool spoiled_ = false;
    bool globalDescriptorsChanged_ = false;
};

} // namespace script
