#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

// The two queues all work runs on: the main queue (a run loop the host pumps; windows, alerts
// and all extension state live there) and one process-wide serial background queue (file work,
// strictly one job after another in submission order). Tasks may be posted from any thread.
// A task that throws is reported on standard error; the queue goes on with the next one.
namespace px::queue {

using Task = std::function<void()>;

void enterForeground(Task task);
void enterBackground(Task task);
// Runs after whole seconds on the respective queue; a delay of 0 still runs later, not inline.
void enterForegroundWithDelay(int seconds, Task task);
void enterBackgroundWithDelay(int seconds, Task task);
// The same with a finer delay; a delay of 0 or less queues the task like enterForeground.
void enterForegroundAfter(std::chrono::milliseconds delay, Task task);
void enterBackgroundAfter(std::chrono::milliseconds delay, Task task);

// The thread that pumps the main queue: the one marked by markMainThread, else the first
// caller of runUntilIdle or runPendingOnce; before either, the process's initial thread.
bool isMainThread();
void markMainThread();
// Runs the task on the main queue and waits for it; inline when already on the main thread.
// An exception the task throws reaches the caller. Someone must be pumping the main queue.
void syncOnMain(const Task& task);

// Pumps the main queue on the calling thread until both queues are empty, no background task
// is running and no delayed work is pending. Delayed work is waited for in real time.
void runUntilIdle();
// Runs the main-queue tasks that are due now; answers how many ran. Tasks they post wait for
// the next call.
int runPendingOnce();
// For a host whose own event loop pumps the main queue (with runPendingOnce): `wake` is called
// from any thread whenever main-queue work is posted or background work ends; it must only
// arrange for the loop to pump soon. The next turn is when the loop should pump again: now,
// the due time of the next delayed task, or none.
void setMainQueueWake(Task wake);
std::optional<std::chrono::steady_clock::time_point> nextMainQueueTurn();
// For such a host: runUntilIdle on the main thread hands its wait to `waiter`, which runs the
// host's loop until `idle` answers true. An empty waiter restores the plain wait.
using IdleWaiter = std::function<void(const std::function<bool()>& idle)>;
void setIdleWaiter(IdleWaiter waiter);

// True when neither queue holds work, delayed work included, and no background task runs.
bool isIdle();

// The background queue's label: the reverse-DNS prefix followed by ".taskQueue".
std::string backgroundQueueLabel();
// True on the background queue's worker thread.
bool isBackgroundThread();

} // namespace px::queue
