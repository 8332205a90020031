#pragma once

#include "media/PdfDocument.h"

#include <memory>
#include <string>

// The PDF document of PdfDocument.h, assembled with qpdf.
namespace px::media {

class PdfAssembler final : public PdfDocument {
  public:
    PdfAssembler();
    ~PdfAssembler() override;
    PdfAssembler(const PdfAssembler&) = delete;
    PdfAssembler& operator=(const PdfAssembler&) = delete;

    void setKeepFilesClosed(bool closed) override;
    ErrorOr<void> appendDocument(const std::string& path) override;
    ErrorOr<void> appendImage(const PdfImageSource& image) override;
    int pageCount() const override;
    ErrorOr<void> write(const std::string& path) override;

  private:
    struct State;
    std::unique_ptr<State> m_state;
};

} // namespace px::media
