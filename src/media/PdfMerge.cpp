#include "actions/FailureLog.h"
#include "media/Imaging.h"
#include "media/PdfLibrary.h"
#include "media/PdfTools.h"
#include "media/UniqueOutput.h"
#include "support/FileIO.h"
#include "support/Localization.h"
#include "support/PathName.h"

#include <cerrno>
#include <mutex>
#include <optional>

namespace px::media {
namespace {

// Beyond this many files, source PDFs are not held open between reads.
constexpr std::size_t kOpenSourcesLimit = 200;

bool isPdfPath(const std::string& path) {
    return path::lowercased(path::pathExtension(path)) == "pdf";
}

// Empty when the file is not an image, or when the image library cannot be loaded (noted once).
std::optional<PdfImageSource> imageSource(const std::string& path) {
    ErrorOr<Imaging*> imaging = media::imaging();
    if (imaging) return imaging.value()->pdfImageSource(path);
    static std::once_flag noted;
    std::call_once(noted, [&] { logFailure(imaging.error()); });
    return std::nullopt;
}

// Appends the file's pages; false (with a note on standard error) when it adds nothing.
bool appendContributor(PdfDocument& assembler, const std::string& path) {
    ErrorOr<void> added = Error{path + " is neither a PDF document nor an image", 0};
    if (!io::exists(path)) {
        added = Error{path + " does not exist", ENOENT};
    } else if (isPdfPath(path)) {
        added = assembler.appendDocument(path);
    } else if (std::optional<PdfImageSource> image = imageSource(path)) {
        added = assembler.appendImage(*image);
    }
    if (added.isError()) logFailure(added.error());
    return !added.isError();
}

// One page keeps the first contributor's name; more make an untitled document beside it.
std::string outputPathFor(const std::string& firstContributor, int pageCount) {
    if (pageCount < 2) return path::deletingPathExtension(firstContributor) + ".pdf";
    const std::string folder = path::deletingLastPathComponent(firstContributor);
    return path::appendingPathComponent(folder, localized("Untitled") + ".pdf");
}

ErrorOr<std::string> writeUnderUniqueName(PdfDocument& assembler, const std::string& wanted) {
    UniqueOutput output = TRY(UniqueOutput::beside(wanted));
    TRY(assembler.write(output.temporaryPath()));
    return output.publish(wanted);
}

} // namespace

void mergeToPDF(const std::vector<std::string>& paths) {
    if (paths.empty()) return;
    ErrorOr<PdfLibrary*> library = pdfLibrary();
    if (library.isError()) return logFailure(library.error());
    std::unique_ptr<PdfDocument> document = library.value()->newDocument();
    PdfDocument& assembler = *document;
    assembler.setKeepFilesClosed(paths.size() > kOpenSourcesLimit);
    std::optional<std::string> firstContributor;
    for (const std::string& path : paths)
        if (appendContributor(assembler, path) && !firstContributor) firstContributor = path;
    if (!firstContributor) return;
    auto written =
        writeUnderUniqueName(assembler, outputPathFor(*firstContributor, assembler.pageCount()));
    if (written.isError()) logFailure(written.error());
}

} // namespace px::media
