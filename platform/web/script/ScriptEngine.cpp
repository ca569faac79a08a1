#include "platform/web/script/ScriptEngine.h"

#include "platform/web/script/Binding.h"
#include "platform/web/script/ExecutionGuard.h"
#include "platform/web/script/Bindings.h"
#include "platform/web/script/JSHelpers.h"
#include "platform/web/script/Realm.h"
#include "platform/web/script/RealmIsolation.h"

#include <malloc.h>

#include <cstdlib>
#include <mutex>
#include <vector>

namespace script {

namespace {

std::chrono::milliseconds timeLimitSetting{500};

std::mutex releaseMutex;
std::vector<PrivateData*>& pendingReleases()
{
    static auto* list = new std::vector<PrivateData*>;
    return *list;
}

// How many documents may leave promise jobs behind before they are dropped.
constexpr unsigned kDocumentsBetweenDiscards = 32;

std::string describeException(JSContextRef ctx, JSValueRef exception)
{
    try {
        std::string text = toUTF8(ctx, exception);
        return text.empty() ? "uncaught exception" : text;
    } catch (const ScriptThrow&) {
        return "uncaught exception";
    }
}

} // namespace

struct Sentinel {
    static JSValueRef stopSoon(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[],
                               JSValueRef* exception);
};

// The sentinel job: arms the watchdog to stop what runs, then runs until it is stopped. Made
// when the sentinel is placed, so that nothing has to be compiled inside the checkpoint.
constexpr const char* kSentinelJob = "(function (stopSoon) { return function () { stopSoon(); for (;;) {} }; })";

ScriptEngine& ScriptEngine::shared()
{
    // Never destroyed: the engine's threads may still run while the process exits.
    static ScriptEngine* engine = new ScriptEngine;
    return *engine;
}

ScriptEngine::ScriptEngine()
{
    // With polling traps the watchdog's interruptions land at loop heads and calls without
    // signals, fast enough to stop a chain of tiny promise jobs. The engine reads its options
    // from the environment when it starts, which is now; a value set outside wins.
    ::setenv("JSC_usePollingTraps", "true", 0);
    group_ = JSContextGroupCreate();
    guard_ = std::make_unique<ExecutionGuard>(group_);
}

ScriptEngine::~ScriptEngine()
{
    if (locked_ && realm_)
        JSUnlock(realm_->context());
    realm_.reset();
    guard_.reset();
    JSContextGroupRelease(group_);
}

void ScriptEngine::setTimeLimit(std::chrono::milliseconds limit)
{
    timeLimitSetting = std::max(limit, std::chrono::milliseconds(1));
}

std::chrono::milliseconds ScriptEngine::timeLimit()
{
    return timeLimitSetting;
}

Realm& ScriptEngine::realm()
{
    if (!realm_) {
        realm_ = std::make_unique<Realm>(group_);
        ++realmsMade_;
        if (!locked_) {
            JSLock(realm_->context());
            locked_ = true;
        }
    }
    return *realm_;
}

ScriptEngine::Result ScriptEngine::evaluate(std::string_view source)
{
    try {
        return run(source);
    } catch (const std::exception& error) {
        // The engine itself failed (a realm could not be made, memory ran out in our code).
        guard_->end();
        realm_.reset();
        return {std::nullopt, std::string("the script engine failed: ") + error.what()};
    }
}

ScriptEngine::Result ScriptEngine::run(std::string_view source)
{
    releaseFinalized();
    Realm& realm = this->realm();
    JSGlobalContextRef ctx = realm.context();
    documentUsed_ = true;
    if (!sentinelPlaced_)
        placeSentinel();
    resetConsoleAllowance();

    Result result;
    guard_->begin(timeLimitSetting);
    JSValueRef exception = nullptr;
    JSValueRef value = realm.evaluate(source, &exception);
    if (guard_->stop() == ExecutionGuard::Stop::None) {
        if (exception)
            result.error = describeException(ctx, exception);
        else if (value && JSValueIsString(ctx, value))
            result.value = toUTF8(ctx, value);
        else
            result.error = "the result is not a string";
    }
    ExecutionGuard::Stop stop = guard_->stop();
    guard_->end();
    if (stop != ExecutionGuard::Stop::None) {
        result.value.reset();
        result.error = stop == ExecutionGuard::Stop::Time
            ? "stopped after " + std::to_string(timeLimitSetting.count()) + " ms"
            : "stopped: used too much memory";
        recoverFromStop(stop == ExecutionGuard::Stop::Memory);
    }
    return result;
}

void ScriptEngine::absorbTermination()
{
    // A stop can leave the termination request pending for whatever enters the engine next;
    // let a harmless call take it.
    JSContextRef ctx = realm_->context();
    JSString probe("(function () { return 0; })()");
    for (int attempt = 0; attempt < 3; ++attempt) {
        JSValueRef exception = nullptr;
        JSEvaluateScript(ctx, probe.get(), nullptr, nullptr, 1, &exception);
        if (!exception)
            break;
    }
}

void ScriptEngine::recoverFromStop(bool memory)
{
    absorbTermination();
    if (memory) {
        // Let go of everything the script held and give the memory back now.
        newDocument();
        discardPendingJobs();
        JSSynchronousGarbageCollectForDebugging(realm().context());
        releaseFinalized();
        ::malloc_trim(0);
    }
}

void ScriptEngine::newDocument()
{
    ++documentNumber_;
    if (!realm_ || !documentUsed_)
        return;
    documentUsed_ = false;
    releaseFinalized();
    realm_->dropDocument();
    bool spoiled = true;
    try {
        spoiled = realm_->isolation().reset() == RealmIsolation::Outcome::Spoiled;
    } catch (const std::exception&) {
    }
    if (spoiled || ++documentsSinceDiscard_ >= kDocumentsBetweenDiscards)
        discardPendingJobs();
    if (spoiled)
        realm_.reset();
}

void ScriptEngine::placeSentinel()
{
    JSContextRef ctx = realm_->context();
    JSObjectRef resolve = nullptr;
    JSObjectRef reject = nullptr;
    JSValueRef exception = nullptr;
    JSObjectRef promise = JSObjectMakeDeferredPromise(ctx, &resolve, &reject, &exception);
    if (!promise || exception)
        return;
    JSObjectCallAsFunction(ctx, resolve, nullptr, 0, nullptr, &exception);
    JSString source(kSentinelJob);
    JSValueRef factory = JSEvaluateScript(ctx, source.get(), nullptr, nullptr, 1, &exception);
    if (!factory || exception)
        return;
    JSString name("stopSoon");
    JSValueRef stop = JSObjectMakeFunctionWithCallback(ctx, name.get(), &Sentinel::stopSoon);
    JSValueRef job = JSObjectCallAsFunction(ctx, toObject(ctx, factory), nullptr, 1, &stop, &exception);
    if (!job || exception)
        return;
    JSObjectRef then = toObject(ctx, getProperty(ctx, realm_->intrinsics(), "promiseThen"));
    JSObjectCallAsFunction(ctx, then, promise, 1, &job, &exception);
    sentinelPlaced_ = !exception;
}

JSValueRef Sentinel::stopSoon(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[], JSValueRef*)
{
    ScriptEngine::shared().guard_->stopSoon();
    return JSValueMakeUndefined(ctx);
}

void ScriptEngine::discardPendingJobs()
{
    documentsSinceDiscard_ = 0;
    if (!sentinelPlaced_ || !locked_ || !realm_)
        return;
    sentinelPlaced_ = false;
    JSContextRef ctx = realm_->context();
    JSUnlock(ctx); // the checkpoint: the sentinel stops it
    JSLock(ctx);
    guard_->end();
    absorbTermination();
    // And an empty checkpoint, after which the engine forgets the rejected promises it tracked.
    JSUnlock(ctx);
    JSLock(ctx);
}

void ScriptEngine::deferRelease(PrivateData* data)
{
    if (!data)
        return;
    std::lock_guard lock(releaseMutex);
    pendingReleases().push_back(data);
}

void ScriptEngine::releaseFinalized()
{
    std::vector<PrivateData*> released;
    {
        std::lock_guard lock(releaseMutex);
        released.swap(pendingReleases());
    }
    for (PrivateData* data : released) {
        const void* identity = nullptr;
        if (data->kind == PrivateData::Kind::Wrapper)
            identity = static_cast<Wrapper*>(data)->identity;
        delete data;
        if (identity && realm_)
            realm_->forgetIdentity(identity);
    }
}

} // namespace script
