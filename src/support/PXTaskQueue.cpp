#include "support/PXTaskQueue.h"

#include "support/Queues.h"

namespace px {

void PXTaskQueue::newTaskWithTarget(std::shared_ptr<void> target, Invocation invocation) {
    m_tasks.push_back(
        {std::move(target), std::make_shared<const Invocation>(std::move(invocation))});
    restart();
}

void PXTaskQueue::restart() {
    if (m_isRunning) return;
    if (m_tasks.empty()) {
        if (m_finishAction) m_finishAction(*this);
        return;
    }
    m_isRunning = true;
    m_isStalled = false;
    m_headStarted = false;
    scheduleStart();
}

void PXTaskQueue::scheduleStart() {
    queue::enterForegroundWithDelay(0, [weakSelf = std::weak_ptr<PXTaskQueue*>(m_self)] {
        auto self = weakSelf.lock();
        if (!self) return;
        PXTaskQueue& owner = **self;
        if (owner.m_isRunning && !owner.m_headStarted) owner.startTask();
    });
}

void PXTaskQueue::startTask() {
    if (m_tasks.empty()) return;
    m_headStarted = true;
    Task head = m_tasks.front(); // kept alive should the task finish inside its own call
    (*head.invocation)();
}

void PXTaskQueue::finishCurrentTask() {
    if (!m_isRunning || !m_headStarted) return;
    m_tasks.pop_front();
    m_isRunning = false;
    m_headStarted = false;
    restart();
}

void PXTaskQueue::stallCurrentTask() {
    if (!m_isRunning || !m_headStarted) return;
    m_isStalled = true;
    m_isRunning = false;
    m_headStarted = false;
}

} // namespace px
