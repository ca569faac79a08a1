#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

typedef const struct OpaqueJSContextGroup* JSContextGroupRef;
typedef const struct OpaqueJSContext* JSContextRef;
typedef const struct OpaqueJSValue* JSValueRef;

struct PNGImageData;

namespace script {

class ExecutionGuard;
class Realm;
struct PrivateData;

// An argument of a function called from outside: a number, a boolean, or an array of numbers.
using ScriptArgument = std::variant<double, bool, std::vector<double>>;

// The process's one JavaScriptCore engine, made on first use, and the document scripts run in.
// Everything happens on the thread that first used it.
//
// There is no event loop: promise jobs a script queues do not run. (Their checkpoint cannot be
// bounded: the engine's watchdog times each job on its own, so an endless chain of short jobs
// would never be stopped.) The engine holds its lock for good, so that no checkpoint happens by
// itself, and drops the queued jobs now and then by killing a checkpoint at its first job, a
// sentinel placed in the empty queue.
class ScriptEngine {
public:
    static ScriptEngine& shared();
    ~ScriptEngine();

    struct Result {
        // The script's value when it is a string.
        std::optional<std::string> value;
        // Why there is no value: the exception's text, a limit, or that the value is not a string.
        std::string error;
        // The script was stopped for using too much time or memory.
        bool stoppedByLimit = false;
        // Asked for with `dataURLImage`: when the value is a string a canvas's toDataURL() made
        // during this evaluation, returned as it is, the image data of the PNG it encodes,
        // instead of `value`. Nothing else can be that string, so it decodes to these pixels.
        std::shared_ptr<const PNGImageData> dataURLImage;
    };
    // Runs a script in the current document.
    Result evaluate(std::string_view source, bool dataURLImage = false);
    // Calls the function expression "function<text>" with `arguments` in the current document,
    // as evaluating "(function<text>)(<the arguments as literals>)" would, but compiles the
    // function only once for every text: each call gets a new function object of the same
    // code. Nothing, and nothing runs, when the text is not one function expression exactly;
    // evaluate the call instead.
    std::optional<Result> callFunctionExpression(std::string_view text, std::span<const ScriptArgument> arguments,
                                                 bool dataURLImage = false);

    // From toDataURL(): `value` is the data URL just made from `data`.
    static void noteDataURL(JSContextRef ctx, JSValueRef value, PNGImageData&& data);

    // Starts a new, empty document: nothing a script made or changed before is reachable.
    void newDocument();
    // Changes with every new document.
    std::uint64_t documentNumber() const { return documentNumber_; }

    static void setTimeLimit(std::chrono::milliseconds limit);
    static std::chrono::milliseconds timeLimit();

    Realm& realm();

    // From the collector's finalizers: the C++ side of a platform object to let go of on our
    // thread, at the next evaluation or document.
    static void deferRelease(PrivateData* data);
    void releaseFinalized();

    // How many realms this engine has made (a new one after a script spoiled the last).
    unsigned realmsMade() const { return realmsMade_; }

private:
    ScriptEngine();
    template <typename Body>
    Result run(Body&& body, bool dataURLImage);
    Result failed(const std::exception& error);
    void forgetDataURL();
    void recoverFromStop(bool memory);
    void absorbTermination();
    void placeSentinel();
    static void noteBitmapMade(std::size_t bytes);
    static bool drawingOverBudget();
    void endWatch();
    bool timersSettled() const;
    void waitForTimersToSettle() const;
    void discardPendingJobsWhenDue();
    void discardPendingJobs();
    friend struct Sentinel;

    JSContextGroupRef group_;
    std::unique_ptr<ExecutionGuard> guard_;
    std::unique_ptr<Realm> realm_;
    bool documentUsed_ = false;
    bool locked_ = false;
    bool sentinelPlaced_ = false;
    unsigned documentsSinceDiscard_ = 0;
    std::size_t residentAtDiscard_ = 0;
    // When the last evaluation's watch ended; its watchdog timer may fire until kTimersSettle
    // after.
    std::chrono::steady_clock::time_point lastWatchEnd_;
    std::uint64_t documentNumber_ = 1;
    unsigned realmsMade_ = 0;
    bool evaluating_ = false;
    // The data URL toDataURL() last made in this evaluation (kept from the collector, so that
    // no other string can take its place) and the image data it encodes.
    JSValueRef lastDataURL_ = nullptr;
    std::shared_ptr<const PNGImageData> lastDataURLImage_;
};

} // namespace script
