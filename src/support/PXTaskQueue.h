#pragma once

#include <concepts>
#include <deque>
#include <functional>
#include <memory>
#include <tuple>
#include <utility>

namespace px {

template <typename T> class PXTaskTrampoline;

// Runs recorded method calls one at a time, in the order they were recorded. A task runs on the
// main queue and stays at the head until it calls finishCurrentTask (the next one starts) or
// stallCurrentTask (it waits, and a later restart runs it again from its start). Not
// thread-safe: it is driven from the main queue, and tasks finish or stall from there.
class PXTaskQueue {
  public:
    using Invocation = std::function<void()>;
    using FinishAction = std::function<void(PXTaskQueue&)>;

    PXTaskQueue() = default;
    PXTaskQueue(const PXTaskQueue&) = delete;
    PXTaskQueue& operator=(const PXTaskQueue&) = delete;

    // A proxy whose call(&T::method, args...) records that call as the next task.
    template <typename T> PXTaskTrampoline<T> taskWithTarget(std::shared_ptr<T> target);
    // Appends the task (the target is kept alive with it), then restart.
    void newTaskWithTarget(std::shared_ptr<void> target, Invocation invocation);

    // Called with the queue each time restart finds the list empty.
    void setFinishAction(FinishAction action) { m_finishAction = std::move(action); }
    template <typename T>
    void setFinishAction(void (T::*selector)(PXTaskQueue&), std::shared_ptr<T> target);

    // Nothing while running. With no tasks left, the finish action; otherwise the head task
    // starts on the main queue's next turn, not inside this call.
    void restart();
    // Invokes the head task.
    void startTask();
    // Both act only on a task that has started: a finish or stall arriving before the next
    // task began (a second finish, say) is ignored and cannot drop that task.
    void finishCurrentTask();
    void stallCurrentTask();

    // True when neither running nor stalled; it does not look at the recorded tasks.
    bool isEmpty() const { return !m_isRunning && !m_isStalled; }
    bool isRunning() const { return m_isRunning; }
    bool isStalled() const { return m_isStalled; }

  private:
    struct Task {
        std::shared_ptr<void> target;
        // Shared: the recorded arguments are not copied again each time the task starts.
        std::shared_ptr<const Invocation> invocation;
    };

    void scheduleStart();

    std::deque<Task> m_tasks;
    FinishAction m_finishAction;
    bool m_isRunning = false;
    bool m_isStalled = false;
    bool m_headStarted = false;
    // Lets a start already queued on the main queue notice that this queue is gone.
    std::shared_ptr<PXTaskQueue*> m_self = std::make_shared<PXTaskQueue*>(this);
};

// Records calls for `actual` on its queue instead of making them now.
template <typename T> class PXTaskTrampoline {
  public:
    PXTaskTrampoline(std::shared_ptr<T> target, PXTaskQueue& owner)
        : actual(std::move(target)), queue(&owner) {}

    // The arguments are copied and kept with the task until it is finished, so a task run
    // again after a stall sees them unchanged.
    template <typename Method, typename... Args>
    requires std::invocable < Method, T&, std::decay_t<Args>
    &... > void call(Method method, Args&&... args) {
        queue->newTaskWithTarget(actual, [target = actual, method,
                                          saved = std::make_tuple(std::forward<Args>(args)...)] {
            std::apply([&](auto&... values) { std::invoke(method, *target, values...); }, saved);
        });
    }

    std::shared_ptr<T> actual;
    PXTaskQueue* queue;
};

template <typename T> PXTaskTrampoline<T> PXTaskQueue::taskWithTarget(std::shared_ptr<T> target) {
    return PXTaskTrampoline<T>(std::move(target), *this);
}

template <typename T>
void PXTaskQueue::setFinishAction(void (T::*selector)(PXTaskQueue&), std::shared_ptr<T> target) {
    setFinishAction([selector, target](PXTaskQueue& queue) { ((*target).*selector)(queue); });
}

} // namespace px
