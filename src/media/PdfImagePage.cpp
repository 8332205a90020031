#include "media/PdfImagePage.h"

#include "actions/FailureLog.h"

#include <fmt/format.h>
#include <qpdf/Pipeline.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>

namespace px::media {
namespace {

using Writer = bool (Imaging::*)(const PdfImageSource&, const SampleSink&);

// Stream data produced when the document is written. Decoded samples go in unfiltered and the
// writer compresses them with Flate; JPEG data goes in as stored, under DCTDecode.
void provideSamples(QPDFObjectHandle stream, const PdfImageSource& image, Imaging& imaging,
                    Writer writer, QPDFObjectHandle filter) {
    auto provider = [image, &imaging, writer](Pipeline* pipeline) {
        const bool complete =
            (imaging.*writer)(image, [pipeline](const unsigned char* bytes, std::size_t size) {
                pipeline->write(bytes, size);
            });
        pipeline->finish();
        if (!complete)
            logFailure(Error{"cannot read all pixels of " + image.path + "; they are left white"});
    };
    stream.replaceStreamData(provider, filter, QPDFObjectHandle::newNull());
}

QPDFObjectHandle imageStream(QPDF& pdf, const PdfImageSource& image, int components) {
    QPDFObjectHandle stream = pdf.newStream();
    stream.getDict().replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
    stream.getDict().replaceKey("/Subtype", QPDFObjectHandle::newName("/Image"));
    stream.getDict().replaceKey("/Width", QPDFObjectHandle::newInteger(image.width));
    stream.getDict().replaceKey("/Height", QPDFObjectHandle::newInteger(image.height));
    stream.getDict().replaceKey("/BitsPerComponent", QPDFObjectHandle::newInteger(8));
    stream.getDict().replaceKey(
        "/ColorSpace", QPDFObjectHandle::newName(components == 1 ? "/DeviceGray" : "/DeviceRGB"));
    return stream;
}

QPDFObjectHandle imageXObject(QPDF& pdf, const PdfImageSource& image, Imaging& imaging) {
    QPDFObjectHandle stream = imageStream(pdf, image, image.components);
    const bool jpeg = image.samples == PdfImageSource::Samples::Jpeg;
    provideSamples(stream, image, imaging, &Imaging::writeColourSamples,
                   jpeg ? QPDFObjectHandle::newName("/DCTDecode") : QPDFObjectHandle::newNull());
    if (image.hasAlpha) {
        QPDFObjectHandle mask = imageStream(pdf, image, 1);
        provideSamples(mask, image, imaging, &Imaging::writeAlphaSamples,
                       QPDFObjectHandle::newNull());
        stream.getDict().replaceKey("/SMask", mask);
    }
    return stream;
}

} // namespace

void appendImagePage(QPDF& destination, const PdfImageSource& image, Imaging& imaging) {
    QPDFObjectHandle page = destination.makeIndirectObject(QPDFObjectHandle::parse(
        fmt::format("<< /Type /Page /MediaBox [0 0 {} {}] /Resources << /XObject << >> >> >>",
                    image.width, image.height)));
    page.getKey("/Resources")
        .getKey("/XObject")
        .replaceKey("/Im0", imageXObject(destination, image, imaging));
    page.replaceKey("/Contents", destination.newStream(fmt::format("q {} 0 0 {} 0 0 cm /Im0 Do Q\n",
                                                                   image.width, image.height)));
    QPDFPageDocumentHelper(destination).addPage(page, false);
}

} // namespace px::media
