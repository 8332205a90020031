#include "media/PdfAssembler.h"

#include "media/PdfImagePage.h"
#include "media/PdfPageCopy.h"

#include <cerrno>
#include <cstdio>
#include <exception>
#include <qpdf/ClosedFileInputSource.hh>
#include <qpdf/QPDFWriter.hh>
#include <vector>

// qpdf reports every failure by throwing; each entry point here catches once and answers a
// value, so no exception leaves this file.
namespace px::media {

struct PdfAssembler::State {
    // Sources first, so that the destination, which reads their streams, goes before them.
    std::vector<std::unique_ptr<QPDF>> sources;
    QPDF destination;
    PDFVersion highestVersion{1, 4}; // soft masks need 1.4
    int pages = 0;
    bool keepFilesClosed = false;
    std::optional<Error> broken;
};

namespace {

template <typename Work> ErrorOr<void> guarded(const std::string& what, Work&& work) {
    try {
        work();
        return {};
    } catch (const std::exception& failure) {
        return Error{what + ": " + failure.what(), 0};
    }
}

std::unique_ptr<QPDF> openSource(const std::string& path, bool keepClosed) {
    auto source = std::make_unique<QPDF>();
    source->setSuppressWarnings(true);
    if (!keepClosed) {
        source->processFile(path.c_str());
        return source;
    }
    auto input = std::make_shared<ClosedFileInputSource>(path.c_str());
    source->processInputSource(input);
    return source;
}

} // namespace

PdfAssembler::PdfAssembler() : m_state(std::make_unique<State>()) {
    auto made = guarded("cannot start a PDF document", [&] {
        m_state->destination.setSuppressWarnings(true);
        m_state->destination.emptyPDF();
    });
    if (made.isError()) m_state->broken = made.error();
}

PdfAssembler::~PdfAssembler() = default;

void PdfAssembler::setKeepFilesClosed(bool closed) {
    m_state->keepFilesClosed = closed;
}

int PdfAssembler::pageCount() const {
    return m_state->pages;
}

ErrorOr<void> PdfAssembler::appendDocument(const std::string& path) {
    if (m_state->broken) return *m_state->broken;
    return guarded("cannot read " + path + " as a PDF", [&] {
        std::unique_ptr<QPDF> source = openSource(path, m_state->keepFilesClosed);
        m_state->pages += appendAllPages(m_state->destination, *source);
        m_state->highestVersion.updateIfGreater(source->getVersionAsPDFVersion());
        m_state->sources.push_back(std::move(source));
    });
}

ErrorOr<void> PdfAssembler::appendImage(const PdfImageSource& image) {
    if (m_state->broken) return *m_state->broken;
    Imaging* imaging = TRY(media::imaging());
    return guarded("cannot add " + image.path + " as a page", [&] {
        appendImagePage(m_state->destination, image, *imaging);
        m_state->pages += 1;
    });
}

ErrorOr<void> PdfAssembler::write(const std::string& path) {
    if (m_state->broken) return *m_state->broken;
    // The file is ours to close: the writer's own final flush ignores a full disk.
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return Error::fromErrno("cannot write " + path, errno);
    auto written = guarded("cannot write " + path, [&] {
        QPDFWriter writer(m_state->destination);
        writer.setOutputFile(path.c_str(), file, false);
        writer.setMinimumPDFVersion(m_state->highestVersion);
        writer.write();
    });
    const bool flushed = std::fflush(file) == 0 && std::ferror(file) == 0;
    const int failure = errno;
    const bool closed = std::fclose(file) == 0;
    if (written.isError()) return written;
    if (!flushed || !closed)
        return Error::fromErrno("cannot write " + path, flushed ? errno : failure);
    return {};
}

} // namespace px::media
