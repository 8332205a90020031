#include "support/Queues.h"

#include "support/MainQueue.h"
#include "support/SerialQueue.h"

#include <atomic>
#include <condition_variable>
#include <exception>
#include <memory>
#include <mutex>
#include <string_view>
#include <sys/syscall.h>
#include <unistd.h>

namespace px::queue {

namespace {

constexpr std::string_view kReverseDnsPrefix = "org.pxmenu";

std::atomic<std::thread::id> markedMainThread;
// Set once the background queue exists, so that looking at it does not start its thread.
std::atomic<SerialQueue*> madeBackgroundQueue;

// The queues live for the process and are never destroyed: at exit a background task may
// still be running or waiting for the main queue, and neither may be pulled from under it.
SerialQueue& backgroundQueue() {
    static SerialQueue* queue = new SerialQueue(backgroundQueueLabel(), [] { mainQueue().wake(); });
    madeBackgroundQueue.store(queue);
    return *queue;
}

bool backgroundIsIdle() {
    SerialQueue* queue = madeBackgroundQueue.load();
    return queue == nullptr || queue->isIdle();
}

void markIfNoneMarked() {
    std::thread::id none;
    markedMainThread.compare_exchange_strong(none, std::this_thread::get_id());
}

Clock::time_point dueAfter(std::chrono::milliseconds delay) {
    return Clock::now() + delay;
}

} // namespace

MainQueue& mainQueue() {
    static MainQueue* queue = new MainQueue();
    return *queue;
}

void enterForeground(Task task) {
    mainQueue().post(std::move(task));
}

void enterBackground(Task task) {
    backgroundQueue().post(std::move(task));
}

void enterForegroundWithDelay(int seconds, Task task) {
    enterForegroundAfter(std::chrono::seconds(seconds), std::move(task));
}

void enterBackgroundWithDelay(int seconds, Task task) {
    enterBackgroundAfter(std::chrono::seconds(seconds), std::move(task));
}

void enterForegroundAfter(std::chrono::milliseconds delay, Task task) {
    if (delay <= std::chrono::milliseconds::zero()) return enterForeground(std::move(task));
    mainQueue().postAt(dueAfter(delay), std::move(task));
}

void enterBackgroundAfter(std::chrono::milliseconds delay, Task task) {
    if (delay <= std::chrono::milliseconds::zero()) return enterBackground(std::move(task));
    backgroundQueue().postAt(dueAfter(delay), std::move(task));
}

bool isMainThread() {
    std::thread::id marked = markedMainThread.load();
    if (marked != std::thread::id()) return marked == std::this_thread::get_id();
    return syscall(SYS_gettid) == getpid();
}

void markMainThread() {
    markedMainThread.store(std::this_thread::get_id());
}

void syncOnMain(const Task& task) {
    if (isMainThread()) return task();
    struct Handover {
        std::mutex mutex;
        std::condition_variable ran;
        bool done = false;
        std::exception_ptr failure;
    };
    auto handover = std::make_shared<Handover>();
    enterForeground([&task, handover] {
        std::exception_ptr failure;
        try {
            task();
        } catch (...) {
            failure = std::current_exception();
        }
        std::lock_guard lock(handover->mutex);
        handover->failure = std::move(failure);
        handover->done = true;
        handover->ran.notify_all();
    });
    std::unique_lock lock(handover->mutex);
    handover->ran.wait(lock, [&] { return handover->done; });
    // Taken out under the lock, so the failure is released here and nowhere else.
    if (std::exception_ptr failure = std::move(handover->failure)) std::rethrow_exception(failure);
}

IdleWaiter& idleWaiter() {
    static IdleWaiter waiter;
    return waiter;
}

void setIdleWaiter(IdleWaiter waiter) {
    idleWaiter() = std::move(waiter);
}

void runUntilIdle() {
    markIfNoneMarked();
    if (idleWaiter() && isMainThread()) return idleWaiter()([] { return isIdle(); });
    mainQueue().runUntilIdle([] { return !backgroundIsIdle(); });
}

int runPendingOnce() {
    markIfNoneMarked();
    return mainQueue().runPendingOnce();
}

void setMainQueueWake(Task wake) {
    mainQueue().setWakeCallback(std::move(wake));
}

std::optional<std::chrono::steady_clock::time_point> nextMainQueueTurn() {
    return mainQueue().nextTurn();
}

bool isIdle() {
    return mainQueue().isEmpty() && backgroundIsIdle();
}

std::string backgroundQueueLabel() {
    return std::string(kReverseDnsPrefix) + ".taskQueue";
}

bool isBackgroundThread() {
    SerialQueue* queue = madeBackgroundQueue.load();
    return queue != nullptr && queue->isCurrentThread();
}

} // namespace px::queue
