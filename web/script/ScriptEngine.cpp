#include "web/script/ScriptEngine.h"

#include "web/canvas/DrawingInterruption.h"
#include "web/canvas/HTMLCanvasElement.h"
#include "web/image/PNGEncoder.h"

#include "web/script/Binding.h"
#include "web/script/ExecutionGuard.h"
#include "web/script/JSCPrivate.h"
#include "web/script/Bindings.h"
#include "web/script/JSHelpers.h"
#include "web/script/Realm.h"
#include "web/script/RealmIsolation.h"

#include <malloc.h>

#include <cstdlib>
#include <mutex>
#include <thread>
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

// Promise jobs are dropped by stopping a checkpoint with the watchdog (see placeSentinel), with
// a timer of its own. JavaScriptCore aborts the process when a watchdog timer fires just as the
// engine takes the trap another one set (VMTraps asserts on a stop request whose trap it has
// already cleared), and its timers cannot be cancelled: each evaluation leaves one behind, due
// within the guard's period. So jobs are dropped only when that timer is certainly done, at the
// first document that comes kTimersSettle after the last evaluation (a list of themes renders in
// bursts with pauses between). A process that renders without pause drops them when the memory
// they hold grows, after sleeping until the timers are done.
constexpr auto kTimersSettle = std::chrono::milliseconds(20);
// How many documents may leave promise jobs behind before they are dropped at the next pause.
constexpr unsigned kDocumentsBetweenDiscards = 32;
// How often, in documents, the memory is looked at, and how much it may grow before queued jobs
// are dropped without a pause.
constexpr unsigned kDocumentsBetweenMemoryChecks = 16;
constexpr std::size_t kQueuedJobsMemoryAllowance = std::size_t(64) << 20;

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
    static JSValueRef pause(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[],
                            JSValueRef* exception);
};

// The sentinel job: arms the watchdog to stop what runs, then waits in a loop until it is
// stopped (the watchdog's timer thread takes some tens of microseconds to wake). Each turn
// waits a little in native code, so that the loop turns a few dozen times rather than tens of
// thousands, and the JIT never finds it hot enough to compile. Made when the sentinel is placed,
// so that nothing has to be compiled inside the checkpoint.
constexpr const char* kSentinelJob
    = "(function (stopSoon, pause) { return function () { stopSoon(); for (;;) pause(); }; })";

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
    HTMLCanvasElement::setBitmapObserver(&ScriptEngine::noteBitmapMade);
    setDrawingInterruption(&ScriptEngine::drawingOverBudget);
}

bool ScriptEngine::drawingOverBudget()
{
    ScriptEngine& engine = shared();
    return engine.guard_ && engine.guard_->overBudget();
}

void ScriptEngine::noteBitmapMade(std::size_t bytes)
{
    // Bitmaps are made while a script draws, inside the engine's lock; the collector then
    // counts them towards its next collection, so that canvases left behind go in time.
    ScriptEngine& engine = shared();
    if (engine.locked_ && engine.realm_)
        JSReportExtraMemoryCost(engine.realm_->context(), bytes);
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

template <typename Body>
ScriptEngine::Result ScriptEngine::run(Body&& body, bool dataURLImage)
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
    evaluating_ = true;
    JSValueRef exception = nullptr;
    JSValueRef value = body(realm, &exception);
    evaluating_ = false;
    if (guard_->stop() == ExecutionGuard::Stop::None) {
        if (exception)
            result.error = describeException(ctx, exception);
        else if (dataURLImage && value && value == lastDataURL_)
            result.dataURLImage = lastDataURLImage_;
        else if (value && JSValueIsString(ctx, value))
            result.value = toUTF8(ctx, value);
        else
            result.error = "the result is not a string";
    }
    forgetDataURL();
    ExecutionGuard::Stop stop = guard_->stop();
    endWatch();
    if (stop != ExecutionGuard::Stop::None) {
        result.value.reset();
        result.dataURLImage.reset();
        result.stoppedByLimit = true;
        result.error = stop == ExecutionGuard::Stop::Time
            ? "stopped after " + std::to_string(timeLimitSetting.count()) + " ms"
            : "stopped: used too much memory";
        recoverFromStop(stop == ExecutionGuard::Stop::Memory);
    }
    return result;
}

ScriptEngine::Result ScriptEngine::failed(const std::exception& error)
{
    // The engine itself failed (a realm could not be made, memory ran out in our code).
    endWatch();
    evaluating_ = false;
    forgetDataURL();
    realm_.reset();
    Result result;
    result.error = std::string("the script engine failed: ") + error.what();
    return result;
}

ScriptEngine::Result ScriptEngine::evaluate(std::string_view source, bool dataURLImage)
{
    try {
        return run([&](Realm& realm, JSValueRef* exception) { return realm.evaluate(source, exception); },
                   dataURLImage);
    } catch (const std::exception& error) {
        return failed(error);
    }
}

std::optional<ScriptEngine::Result> ScriptEngine::callFunctionExpression(std::string_view text,
                                                                         std::span<const ScriptArgument> arguments,
                                                                         bool dataURLImage)
{
    // The values live on the stack, where the collector sees them, until the call has them.
    constexpr std::size_t kMostArguments = 16, kMostElements = 16;
    if (arguments.size() > kMostArguments)
        return std::nullopt;
    for (const ScriptArgument& argument : arguments)
        if (const auto* elements = std::get_if<std::vector<double>>(&argument); elements && elements->size() > kMostElements)
            return std::nullopt;
    try {
        JSObjectRef factory = realm().functionFactory(text);
        if (!factory)
            return std::nullopt;
        return run(
            [&](Realm& realm, JSValueRef* exception) -> JSValueRef {
                JSContextRef ctx = realm.context();
                JSValueRef values[1 + kMostArguments];
                values[0] = factory;
                std::size_t count = 1;
                for (const ScriptArgument& argument : arguments) {
                    if (const double* number = std::get_if<double>(&argument)) {
                        values[count++] = JSValueMakeNumber(ctx, *number);
                    } else if (const bool* flag = std::get_if<bool>(&argument)) {
                        values[count++] = JSValueMakeBoolean(ctx, *flag);
                    } else {
                        const std::vector<double>& numbers = std::get<std::vector<double>>(argument);
                        JSValueRef elements[kMostElements];
                        for (std::size_t i = 0; i < numbers.size(); ++i)
                            elements[i] = JSValueMakeNumber(ctx, numbers[i]);
                        values[count] = JSObjectMakeArray(ctx, numbers.size(), elements, exception);
                        if (!values[count] || *exception)
                            return nullptr;
                        ++count;
                    }
                }
                return JSObjectCallAsFunction(ctx, realm.caller(arguments.size()), nullptr, count, values, exception);
            },
            dataURLImage);
    } catch (const std::exception& error) {
        return failed(error);
    }
}

void ScriptEngine::noteDataURL(JSContextRef ctx, JSValueRef value, PNGImageData&& data)
{
    ScriptEngine& engine = shared();
    if (!engine.evaluating_)
        return;
    engine.forgetDataURL();
    JSValueProtect(ctx, value);
    engine.lastDataURL_ = value;
    engine.lastDataURLImage_ = std::make_shared<const PNGImageData>(std::move(data));
}

void ScriptEngine::forgetDataURL()
{
    if (lastDataURL_ && realm_)
        JSValueUnprotect(realm_->context(), lastDataURL_);
    lastDataURL_ = nullptr;
    lastDataURLImage_.reset();
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
        waitForTimersToSettle();
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
    // A spoiled realm goes; its jobs are dropped with the next realm's, at the next pause.
    documentsSinceDiscard_ = spoiled ? std::max(documentsSinceDiscard_ + 1, kDocumentsBetweenDiscards)
                                     : documentsSinceDiscard_ + 1;
    discardPendingJobsWhenDue();
    if (spoiled)
        realm_.reset();
}

void ScriptEngine::endWatch()
{
    guard_->end();
    lastWatchEnd_ = std::chrono::steady_clock::now();
}

bool ScriptEngine::timersSettled() const
{
    return std::chrono::steady_clock::now() >= lastWatchEnd_ + kTimersSettle;
}

void ScriptEngine::waitForTimersToSettle() const
{
    std::this_thread::sleep_until(lastWatchEnd_ + kTimersSettle);
}

void ScriptEngine::discardPendingJobsWhenDue()
{
    if (!sentinelPlaced_) {
        documentsSinceDiscard_ = 0;
        return;
    }
    if (documentsSinceDiscard_ >= kDocumentsBetweenDiscards && timersSettled()) {
        discardPendingJobs();
        return;
    }
    if (documentsSinceDiscard_ % kDocumentsBetweenMemoryChecks != 0)
        return;
    std::size_t resident = ExecutionGuard::residentBytes();
    if (!residentAtDiscard_ || resident <= residentAtDiscard_ + kQueuedJobsMemoryAllowance) {
        if (!residentAtDiscard_)
            residentAtDiscard_ = resident;
        return;
    }
    waitForTimersToSettle();
    discardPendingJobs();
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
    JSString stopName("stopSoon");
    JSString pauseName("pause");
    JSValueRef helpers[] = {JSObjectMakeFunctionWithCallback(ctx, stopName.get(), &Sentinel::stopSoon),
                            JSObjectMakeFunctionWithCallback(ctx, pauseName.get(), &Sentinel::pause)};
    JSValueRef job = JSObjectCallAsFunction(ctx, toObject(ctx, factory), nullptr, 2, helpers, &exception);
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

JSValueRef Sentinel::pause(JSContextRef ctx, JSObjectRef, JSObjectRef, std::size_t, const JSValueRef[], JSValueRef*)
{
    // Spinning rather than sleeping: a sleep lasts at least the kernel's timer slack (50 us),
    // longer than the watchdog usually needs.
    auto until = std::chrono::steady_clock::now() + std::chrono::microseconds(2);
    while (std::chrono::steady_clock::now() < until) {
    }
    return JSValueMakeUndefined(ctx);
}

void ScriptEngine::discardPendingJobs()
{
    if (!sentinelPlaced_ || !locked_ || !realm_)
        return;
    documentsSinceDiscard_ = 0;
    sentinelPlaced_ = false;
    JSContextRef ctx = realm_->context();
    JSUnlock(ctx); // the checkpoint: the sentinel stops it
    JSLock(ctx);
    guard_->end();
    absorbTermination();
    // And an empty checkpoint, after which the engine forgets the rejected promises it tracked.
    JSUnlock(ctx);
    JSLock(ctx);
    residentAtDiscard_ = ExecutionGuard::residentBytes();
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
