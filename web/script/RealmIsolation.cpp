#include "web/script/RealmIsolation.h"

#include "web/script/JSCPrivate.h"
#include "web/script/JSHelpers.h"
#include "web/script/Realm.h"

#include <stdexcept>

namespace script {

namespace {

// Records the realm and compiles the check; runs once per realm, before any script. Returns
// { check(skipGlobal) -> 0 clean | 1 global object changed | 2 built-ins changed,
//   restore() -> whether the global object is as recorded again, objects }.
constexpr const char* kSnapshot = R"JS((function (intrinsics) {
    'use strict';
    const ownKeys = Reflect.ownKeys, describe = Reflect.getOwnPropertyDescriptor, protoOf = Reflect.getPrototypeOf;
    const apply = Reflect.apply, is = Object.is;
    const makeFunction = Function, quote = JSON.stringify, assign = Object.assign, create = Object.create;
    const freeze = intrinsics.freeze, defineProperty = intrinsics.defineProperty;
    const deleteProperty = intrinsics.deleteProperty;
    const regExpExec = RegExp.prototype.exec, emptyPattern = /(?:)/;
    const isEnumerable = Object.prototype.propertyIsEnumerable;
    const global = globalThis;

    // Intrinsics no property leads to, reached through syntax.
    const roots = [];
    const root = (make) => { try { roots.push(make()); } catch (e) { } };
    root(() => protoOf(function* () { }));
    root(() => protoOf(async function () { }));
    root(() => protoOf(async function* () { }));
    root(() => protoOf([][Symbol.iterator]()));
    root(() => protoOf(''[Symbol.iterator]()));
    root(() => protoOf(new Map()[Symbol.iterator]()));
    root(() => protoOf(new Set()[Symbol.iterator]()));
    root(() => protoOf(/a/[Symbol.matchAll]('')));
    root(() => protoOf(Iterator.from({ next() { return { done: true }; } })));
    root(() => protoOf([].values().map((x) => x)));
    root(() => protoOf(new Intl.Segmenter().segment('')));
    root(() => protoOf(new Intl.Segmenter().segment('')[Symbol.iterator]()));

    const seen = new Set([global]);
    const queue = [];
    const visit = (value) => {
        if (((typeof value === 'object' && value !== null) || typeof value === 'function') && !seen.has(value)) {
            seen.add(value);
            queue.push(value);
        }
    };
    const visitProperties = (object) => {
        visit(protoOf(object));
        for (const key of ownKeys(object)) {
            const d = describe(object, key);
            visit(d.value);
            visit(d.get);
            visit(d.set);
        }
    };
    visitProperties(global);
    roots.forEach(visit);
    const objects = [];
    while (queue.length) {
        const object = queue.pop();
        objects.push(object);
        visitProperties(object);
    }

    const V = [], K = [], symbolIndex = new Map();
    const symbolKey = (key) => {
        let i = symbolIndex.get(key);
        if (i === undefined) {
            i = K.length;
            K.push(key);
            symbolIndex.set(key, i);
        }
        return 'K[' + i + ']';
    };
    const access = (target, key) => typeof key === 'symbol' ? target + '[' + symbolKey(key) + ']'
        : /^[A-Za-z_$][\w$]*$/.test(key) ? target + '.' + key : target + '[' + quote(key) + ']';
    const valueChanged = (target, key, value) => {
        const read = access(target, key);
        if (value !== value)
            return read + '===' + read;
        V.push(value);
        return read + '!==V[' + (V.length - 1) + ']';
    };

    // What the check compares, object after object, kept as tables that one loop walks. Written
    // out as code, the thousand comparisons made functions whose machine code and inline caches
    // pushed the render's own out of the processor's caches: the render after the check paid
    // more for that than the check took.
    //
    // Each object's own keys must come back as the same list in the same order. That tells of
    // a key added or deleted, and of one deleted and assigned again: assignment puts it last.
    // Only keys deleted and assigned again in the order they stood, at the end of the strings
    // or of the symbols, keep the list as it was; assignment made them writable, enumerable and
    // configurable data properties, so the last key of a run that was anything else (a method
    // that was not enumerable, an accessor, a read-only value) shows it in its descriptor, and
    // that key is described again (a mark). Index keys are listed in number order whatever
    // happened, so each is marked.
    const O = [], keys = [], keyEnds = [], valueEnds = [], valueKeys = [], values = [];
    // Assignment makes a key enumerable: of a mark that was not, asking whether it still is not
    // is enough, and much cheaper than describing it.
    const hiddenObjects = [], hiddenKeys = [];
    const markObjects = [], markKeys = [], markGets = [], markSets = [], markWritable = [];
    const unassignable = [];
    const assignable = (d) => 'value' in d && d.writable;
    const isIndex = (key) => typeof key === 'string' && apply(regExpExec, /^(?:0|[1-9][0-9]*)$/, [key]) !== null
        && +key < 4294967295;
    const mark = (object, key, d) => {
        if (!d.enumerable) {
            hiddenObjects.push(object);
            hiddenKeys.push(key);
            return;
        }
        markObjects.push(object);
        markKeys.push(key);
        markGets.push(d.get);
        markSets.push(d.set);
        markWritable.push(d.writable);
    };
    for (const object of objects) {
        const own = ownKeys(object);
        if (typeof object === 'function' && own.every((key) => !assignable(describe(object, key)))) {
            unassignable.push(object);
            continue;
        }
        let lastString = null, lastSymbol = null;
        for (const key of own) {
            const d = describe(object, key);
            keys.push(key);
            // Only assignment changes a value without changing the list of keys.
            if (assignable(d)) {
                valueKeys.push(key);
                values.push(d.value);
            }
            const plain = assignable(d) && d.enumerable;
            if (!d.configurable || plain)
                continue;
            if (isIndex(key))
                mark(object, key, d);
            else if (typeof key === 'symbol')
                lastSymbol = [key, d];
            else
                lastString = [key, d];
        }
        for (const last of [lastString, lastSymbol]) {
            if (last)
                mark(object, last[0], last[1]);
        }
        O.push(object);
        keyEnds.push(keys.length);
        valueEnds.push(valueKeys.length);
    }
    // Built-in functions with nothing a script could assign (methods with their name and length,
    // constructors with their prototype and constants) are frozen: comparing those every time
    // would cost more than the rest of the check together.
    unassignable.forEach((f) => freeze(f));

    const builtinsChanged = () => {
        let k = 0, v = 0;
        for (let i = 0; i < O.length; i++) {
            const o = O[i], now = ownKeys(o), end = keyEnds[i];
            if (now.length !== end - k)
                return true;
            for (let n = 0; k < end; k++, n++) {
                if (now[n] !== keys[k])
                    return true;
            }
            for (const e = valueEnds[i]; v < e; v++) {
                const a = o[valueKeys[v]], b = values[v];
                // NaN, unequal to itself, is unchanged for as long as it reads NaN.
                if (a !== b && (b === b || a === a))
                    return true;
            }
        }
        // Every object is as recorded above, Object.prototype too, so reading the descriptors'
        // fields runs nothing a script left behind.
        for (let m = 0; m < hiddenObjects.length; m++) {
            if (isEnumerable.call(hiddenObjects[m], hiddenKeys[m]))
                return true;
        }
        for (let m = 0; m < markObjects.length; m++) {
            const d = describe(markObjects[m], markKeys[m]);
            if (d.get !== markGets[m] || d.set !== markSets[m] || !d.enumerable || d.writable !== markWritable[m])
                return true;
        }
        return false;
    };

    let globalKeys = ownKeys(global);
    const globalDescriptors = new Map(), globalTests = [];
    for (const key of globalKeys) {
        const d = describe(global, key);
        globalDescriptors.set(key, assign(create(null), d));
        if ('value' in d && (d.writable || d.configurable))
            globalTests.push(valueChanged('g', key, d.value));
    }
    const globalValuesChanged = makeFunction('V', 'K', 'return function(g){return ' + (globalTests.join('||') || 'false') + '}')(V, K);

    const check = (skipGlobal) => {
        apply(regExpExec, emptyPattern, ['']);
        if (builtinsChanged())
            return 2;
        if (skipGlobal)
            return 1;
        const now = ownKeys(global);
        if (now.length !== globalKeys.length)
            return 1;
        for (let i = 0; i < now.length; i++) {
            if (now[i] !== globalKeys[i])
                return 1;
        }
        return globalValuesChanged(global) ? 1 : 0;
    };

    const same = (a, b) => is(a.value, b.value) && a.get === b.get && a.set === b.set && a.writable === b.writable
        && a.enumerable === b.enumerable && a.configurable === b.configurable;
    const restore = () => {
        const now = ownKeys(global);
        for (let i = 0; i < now.length; i++) {
            if (!globalDescriptors.has(now[i]) && !deleteProperty(global, now[i]))
                return false;
        }
        for (const [key, d] of globalDescriptors) {
            const current = describe(global, key);
            if ((!current || !same(current, d)) && !defineProperty(global, key, d))
                return false;
        }
        globalKeys = ownKeys(global);
        return true;
    };
    return { check, restore, objects };
}))JS";

struct Guard {
    const char* holder; // "Object", "Reflect" or "Object.prototype"
    const char* name;
    bool targetIsThis;
    RealmIsolation::Change change;
    unsigned length;
};

constexpr Guard kGuards[] = {
    {"Object", "defineProperty", false, RealmIsolation::Change::Descriptors, 3},
    {"Object", "defineProperties", false, RealmIsolation::Change::Descriptors, 2},
    {"Reflect", "defineProperty", false, RealmIsolation::Change::Descriptors, 3},
    {"Object.prototype", "__defineGetter__", true, RealmIsolation::Change::Descriptors, 2},
    {"Object.prototype", "__defineSetter__", true, RealmIsolation::Change::Descriptors, 2},
    {"Object", "setPrototypeOf", false, RealmIsolation::Change::Shape, 2},
    {"Reflect", "setPrototypeOf", false, RealmIsolation::Change::Shape, 2},
    {"Object", "preventExtensions", false, RealmIsolation::Change::Shape, 1},
    {"Reflect", "preventExtensions", false, RealmIsolation::Change::Shape, 1},
    {"Object", "seal", false, RealmIsolation::Change::Shape, 1},
    {"Object", "freeze", false, RealmIsolation::Change::Shape, 1},
    {"Reflect", "deleteProperty", false, RealmIsolation::Change::Descriptors, 2},
    // The __proto__ setter of Object.prototype; its getter stays.
    {"Object.prototype", "__proto__", true, RealmIsolation::Change::Shape, 1},
};
constexpr int kGuardCount = int(sizeof kGuards / sizeof kGuards[0]);
constexpr int kProtoSetter = kGuardCount - 1;

// The isolation of the current realm (guards only ever run there).
RealmIsolation* current = nullptr;

template <int I>
JSValueRef guardThunk(JSContextRef ctx, JSObjectRef, JSObjectRef thisObject, std::size_t argc,
                      const JSValueRef argv[], JSValueRef* exception)
{
    RealmIsolation& isolation = *current;
    JSValueRef target = kGuards[I].targetIsThis ? JSValueRef(thisObject) : argc ? argv[0] : JSValueMakeUndefined(ctx);
    isolation.noteChange(target, kGuards[I].change);
    return JSObjectCallAsFunction(ctx, isolation.original(I), thisObject, argc, argv, exception);
}

template <int... I>
constexpr JSObjectCallAsFunctionCallback guardThunkAt(int index, std::integer_sequence<int, I...>)
{
    constexpr JSObjectCallAsFunctionCallback thunks[] = {&guardThunk<I>...};
    return thunks[index];
}

} // namespace

RealmIsolation::RealmIsolation(Realm& realm)
    : realm_(realm)
    , ctx_(realm.context())
{
    current = this;
    installGuards();
    takeSnapshot();
}

RealmIsolation::~RealmIsolation()
{
    if (current == this)
        current = nullptr;
    for (JSObjectRef object : originals_)
        JSValueUnprotect(ctx_, object);
    if (check_)
        JSValueUnprotect(ctx_, check_);
    if (restore_)
        JSValueUnprotect(ctx_, restore_);
}

void RealmIsolation::installGuards()
{
    JSObjectRef global = realm_.global();
    JSObjectRef objectConstructor = toObject(ctx_, getProperty(ctx_, global, "Object"));
    JSObjectRef holders[] = {objectConstructor, toObject(ctx_, getProperty(ctx_, global, "Reflect")),
                             toObject(ctx_, getProperty(ctx_, objectConstructor, "prototype"))};
    auto holderOf = [&](const Guard& guard) {
        std::string_view name = guard.holder;
        return name == "Object" ? holders[0] : name == "Reflect" ? holders[1] : holders[2];
    };
    JSObjectRef describe = toObject(ctx_, getProperty(ctx_, objectConstructor, "getOwnPropertyDescriptor"));
    for (int i = 0; i < kGuardCount; ++i) {
        const Guard& guard = kGuards[i];
        JSObjectRef holder = holderOf(guard);
        JSValueRef key = makeString(ctx_, guard.name);
        JSObjectRef original;
        std::string functionName = guard.name;
        if (i == kProtoSetter) {
            JSValueRef arguments[] = {holder, key};
            JSValueRef exception = nullptr;
            JSValueRef descriptor = JSObjectCallAsFunction(ctx_, describe, nullptr, 2, arguments, &exception);
            rethrowIf(exception);
            original = toObject(ctx_, getProperty(ctx_, toObject(ctx_, descriptor), "set"));
            functionName = "set __proto__";
        } else {
            original = toObject(ctx_, getProperty(ctx_, holder, guard.name));
        }
        JSValueProtect(ctx_, original);
        originals_.push_back(original);

        JSString name(functionName);
        JSObjectRef replacement = JSObjectMakeFunctionWithCallback(
            ctx_, name.get(), guardThunkAt(i, std::make_integer_sequence<int, kGuardCount>()));
        realm_.defineValue(replacement, makeString(ctx_, "length"), JSValueMakeNumber(ctx_, guard.length), false, false, true);
        if (i == kProtoSetter) {
            JSValueRef arguments[] = {holder, key};
            JSValueRef exception = nullptr;
            JSValueRef descriptor = JSObjectCallAsFunction(ctx_, describe, nullptr, 2, arguments, &exception);
            rethrowIf(exception);
            JSValueRef getter = getProperty(ctx_, toObject(ctx_, descriptor), "get");
            realm_.defineAccessor(holder, key, getter, replacement, false, true);
        } else {
            realm_.defineValue(holder, key, replacement, true, false, true);
        }
    }
}

void RealmIsolation::takeSnapshot()
{
    JSString source(kSnapshot);
    JSValueRef exception = nullptr;
    JSValueRef setup = JSEvaluateScript(ctx_, source.get(), nullptr, nullptr, 1, &exception);
    if (exception || !JSValueIsObject(ctx_, setup))
        throw std::runtime_error("cannot record the realm: " + (exception ? toUTF8(ctx_, exception) : std::string()));
    JSValueRef intrinsics = realm_.intrinsics();
    JSValueRef record = JSObjectCallAsFunction(ctx_, toObject(ctx_, setup), nullptr, 1, &intrinsics, &exception);
    if (exception || !JSValueIsObject(ctx_, record))
        throw std::runtime_error("cannot record the realm: " + (exception ? toUTF8(ctx_, exception) : std::string()));
    JSObjectRef recordObject = toObject(ctx_, record);
    check_ = toObject(ctx_, getProperty(ctx_, recordObject, "check"));
    restore_ = toObject(ctx_, getProperty(ctx_, recordObject, "restore"));
    JSValueProtect(ctx_, check_);
    JSValueProtect(ctx_, restore_);
    JSObjectRef objects = toObject(ctx_, getProperty(ctx_, recordObject, "objects"));
    unsigned count = unsigned(JSValueToNumber(ctx_, getProperty(ctx_, objects, "length"), nullptr));
    watched_.reserve(count);
    for (unsigned i = 0; i < count; ++i) {
        JSValueRef object = JSObjectGetPropertyAtIndex(ctx_, objects, i, nullptr);
        if (JSValueIsObject(ctx_, object))
            watched_.insert(const_cast<JSObjectRef>(object));
    }
    spoiled_ = false;
    globalDescriptorsChanged_ = false;
}

void RealmIsolation::noteChange(JSValueRef target, Change change)
{
    if (!JSValueIsObject(ctx_, target))
        return;
    auto object = const_cast<JSObjectRef>(target);
    if (object == realm_.global()) {
        if (change == Change::Shape)
            spoiled_ = true;
        else
            globalDescriptorsChanged_ = true;
        return;
    }
    if (watched_.count(object) || JSObjectGetProxyTarget(object))
        spoiled_ = true;
}

RealmIsolation::Outcome RealmIsolation::reset()
{
    if (spoiled_)
        return Outcome::Spoiled;
    JSValueRef skipGlobal = JSValueMakeBoolean(ctx_, globalDescriptorsChanged_);
    JSValueRef exception = nullptr;
    JSValueRef result = JSObjectCallAsFunction(ctx_, check_, nullptr, 1, &skipGlobal, &exception);
    if (exception || !result)
        return Outcome::Spoiled;
    double state = JSValueToNumber(ctx_, result, nullptr);
    if (state == 0)
        return Outcome::Clean;
    if (state != 1)
        return Outcome::Spoiled;
    JSValueRef restored = JSObjectCallAsFunction(ctx_, restore_, nullptr, 0, nullptr, &exception);
    if (exception || !restored || !JSValueToBoolean(ctx_, restored))
        return Outcome::Spoiled;
    globalDescriptorsChanged_ = false;
    return Outcome::Restored;
}

} // namespace script
