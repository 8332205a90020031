#pragma once

#include <chrono>
#include <functional>

// The two queues all work runs on: the main queue (a run loop the host pumps; windows, alerts
// and all extension state live there) and one process-wide serial background queue (file work,
// strictly one job after another in submission order).
namespace px::queue {

using Task = std::function<void()>;

void enterForeground(Task task);
void enterBackground(Task task);
// Runs after whole seconds on the respective queue; a delay of 0 still runs later, not inline.
void enterForegroundWithDelay(int seconds, Task task);
void enterBackgroundWithDelay(int seconds, Task task);

// The thread that pumps the main queue (the first caller of runUntilIdle or markMainThread).
bool isMainThread();
void markMainThread();
// Runs the task on the main queue and waits for it; inline when already on the main thread.
void syncOnMain(const Task& task);

// Pumps the main queue on the calling thread until both queues are empty and no delayed work
// is pending. Delayed work is waited for in real time.
void runUntilIdle();
// Runs the main-queue tasks that are due now; answers how many ran.
int runPendingOnce();
// True when neither queue holds work, delayed work included.
bool isIdle();

} // namespace px::queue
