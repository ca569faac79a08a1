#include "platform/core/UIScreen.h"
#include "web/script/Bindings.h"
#include "web/script/ElementBindings.h"
#include "web/script/Realm.h"
#include "web/script/RealmIsolation.h"

namespace script {

namespace {

JSValueRef getWindow(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[], JSValueRef*)
{
    return Realm::of(ctx).global();
}

JSValueRef getDocument(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[], JSValueRef*)
{
    return Realm::of(ctx).document();
}

JSValueRef getDevicePixelRatio(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[], JSValueRef*)
{
    return JSValueMakeNumber(ctx, UIScreen::mainScreen().scale());
}

// [Replaceable]: assigning makes an ordinary property that hides the attribute (until the
// next document puts the attribute back).
template <FixedString Name>
JSValueRef replace(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t argc, const JSValueRef argv[],
                   JSValueRef* exception)
{
    return detail::boundary(ctx, exception, [&] {
        Realm& realm = Realm::of(ctx);
        realm.isolation().noteChange(realm.global(), RealmIsolation::Change::Descriptors);
        realm.defineValue(realm.global(), makeString(ctx, Name.c_str()), argc ? argv[0] : JSValueMakeUndefined(ctx),
                          true, true, true);
        return JSValueMakeUndefined(ctx);
    });
}

JSObjectRef function(JSContextRef ctx, const char* name, JSObjectCallAsFunctionCallback callback)
{
    JSString string(name);
    return JSObjectMakeFunctionWithCallback(ctx, string.get(), callback);
}

} // namespace

void installWindowMembers(Realm& realm)
{
    JSContextRef ctx = realm.context();
    JSObjectRef global = realm.global();
    realm.defineAccessor(global, makeString(ctx, "window"), function(ctx, "get window", getWindow), nullptr, true, false);
    realm.defineAccessor(global, makeString(ctx, "self"), function(ctx, "get self", getWindow),
                         function(ctx, "set self", replace<"self">), true, true);
    realm.defineAccessor(global, makeString(ctx, "document"), function(ctx, "get document", getDocument), nullptr, true,
                         false);
    realm.defineAccessor(global, makeString(ctx, "devicePixelRatio"),
                         function(ctx, "get devicePixelRatio", getDevicePixelRatio),
                         function(ctx, "set devicePixelRatio", replace<"devicePixelRatio">), true, true);
    installGetComputedStyle(realm);
    installImageConstructor(realm);
}

} // namespace script
