#include "RequestRunner.h"

#include "RunRequest.h"
#include "platform/Platform.h"
#include "support/Queues.h"

#include <iostream>

namespace px::gui {

struct RequestRunner::Running {
    QPointer<Connection> connection;
    bool wait = false;
    int status = 0;
    bool started = false;
    std::ostringstream transcriptText;
    std::shared_ptr<platform::Transcript> transcript =
        std::make_shared<platform::Transcript>(transcriptText);
    std::ostringstream errors;
    std::streambuf* standardError = nullptr;
};

RequestRunner::RequestRunner(std::shared_ptr<QtUi> ui, std::shared_ptr<QtPasteboard> pasteboard,
                             QueuePump& pump)
    : m_ui(std::move(ui)), m_pasteboard(std::move(pasteboard)), m_pump(pump) {
    connect(&m_poll, &QTimer::timeout, this, &RequestRunner::check);
    m_poll.start(100);
}

RequestRunner::~RequestRunner() {
    if (m_current && m_current->standardError) std::cerr.rdbuf(m_current->standardError);
}

void RequestRunner::enqueue(Connection* connection, const handoff::Request& request) {
    connection->reply({handoff::Reply::Kind::Accepted, {}, {}, {}, 0});
    m_waiting.push_back({connection, request});
    check();
}

void RequestRunner::check() {
    if (m_starting || m_pump.insideUiCall()) return;
    if (m_current && m_current->started && queue::isIdle() && !m_ui->hasOpenWindow()) finish();
    if (m_current || m_waiting.empty() || !queue::isIdle()) return;
    Pending next = std::move(m_waiting.front());
    m_waiting.pop_front();
    start(std::move(next));
}

void RequestRunner::start(Pending pending) {
    m_starting = true;
    m_current = std::make_unique<Running>();
    Running& running = *m_current;
    running.connection = pending.connection;
    running.wait = pending.request.wait;
    running.standardError = std::cerr.rdbuf(running.errors.rdbuf());
    std::shared_ptr<platform::PromptScript> script;
    if (!pending.request.script.empty()) {
        auto answers = platform::parseScript(pending.request.script);
        if (answers.isError()) {
            running.errors << "pxmenu: " << answers.error().message << '\n';
            running.status = 2;
        } else {
            Running* self = &running;
            script = std::make_shared<platform::PromptScript>(
                answers.releaseValue(), running.transcript, [self](int status) {
                    if (self->status == 0) self->status = status;
                    self->transcript->close();
                });
            script->setErrorStream(running.errors);
        }
    }
    m_ui->setScript(script);
    m_pasteboard->setTranscript(script ? running.transcript : nullptr);
    if (running.status == 0) {
        platform::Platform services;
        services.ui = m_ui;
        services.pasteboard = m_pasteboard;
        // Returns once the command's work is over; the event loop runs meanwhile.
        const int ran = runHandedRequest(pending.request, std::move(services), running.errors);
        if (running.status == 0) running.status = ran;
    }
    running.started = true;
    m_starting = false;
    check();
}

void RequestRunner::finish() {
    std::unique_ptr<Running> done = std::move(m_current);
    std::cerr.rdbuf(done->standardError);
    std::cerr << done->errors.str() << std::flush;
    m_ui->setScript(nullptr);
    m_pasteboard->setTranscript(nullptr);
    if (done->wait && done->connection)
        done->connection->reply({handoff::Reply::Kind::Finished,
                                 {},
                                 done->transcriptText.str(),
                                 done->errors.str(),
                                 done->status});
}

} // namespace px::gui
