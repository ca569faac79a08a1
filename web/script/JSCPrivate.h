#pragma once

// Functions that JavaScriptCore exports without installing their headers. They have been part
// of its C interface for years (the engine's own tools and WebKit use them).

#include <JavaScriptCore/JavaScript.h>

extern "C" {

// Called when a script has run for the group's time limit; true stops it, false lets it go
// on. Calling JSContextGroupSetExecutionTimeLimit from inside the callback starts a new period.
typedef bool (*JSShouldTerminateCallback)(JSContextRef ctx, void* context);
JS_EXPORT void JSContextGroupSetExecutionTimeLimit(JSContextGroupRef group, double limit,
                                                   JSShouldTerminateCallback callback, void* context);
JS_EXPORT void JSContextGroupClearExecutionTimeLimit(JSContextGroupRef group);

// Holding the lock across an evaluation defers the microtask checkpoint to the last unlock.
JS_EXPORT void JSLock(JSContextRef ctx);
JS_EXPORT void JSUnlock(JSContextRef ctx);

JS_EXPORT void JSReportExtraMemoryCost(JSContextRef ctx, size_t size);
JS_EXPORT void JSSynchronousGarbageCollectForDebugging(JSContextRef ctx);

// Hidden properties traced by the collector (only on objects made with a JSClass).
JS_EXPORT bool JSObjectSetPrivateProperty(JSContextRef ctx, JSObjectRef object, JSStringRef propertyName,
                                          JSValueRef value);
JS_EXPORT JSValueRef JSObjectGetPrivateProperty(JSContextRef ctx, JSObjectRef object, JSStringRef propertyName);
JS_EXPORT JSObjectRef JSObjectGetProxyTarget(JSObjectRef object);

typedef const struct OpaqueJSWeak* JSWeakRef;
JS_EXPORT JSWeakRef JSWeakCreate(JSContextGroupRef group, JSObjectRef object);
JS_EXPORT void JSWeakRelease(JSContextGroupRef group, JSWeakRef weak);
JS_EXPORT JSObjectRef JSWeakGetObject(JSWeakRef weak);

} // extern "C"
