#include "media/PdfPageCopy.h"

#include <map>
#include <qpdf/QPDFAcroFormDocumentHelper.hh>
#include <qpdf/QPDFPageDocumentHelper.hh>
#include <vector>

namespace px::media {
namespace {

using PageCopies = std::map<QPDFObjGen, QPDFObjectHandle>;

// A destination array ([page /XYZ ...]) whose page was dropped while copying (a copied object
// cannot refer to a page not yet copied) gets the copy of its original page back.
void relinkDestination(QPDFObjectHandle original, QPDFObjectHandle copy, const PageCopies& pages) {
    if (!original.isArray() || !copy.isArray()) return;
    if (original.getArrayNItems() == 0 || copy.getArrayNItems() == 0) return;
    QPDFObjectHandle target = original.getArrayItem(0);
    if (!target.isIndirect()) return;
    auto found = pages.find(target.getObjGen());
    if (found != pages.end()) copy.setArrayItem(0, found->second);
}

QPDFObjectHandle dictionaryKey(QPDFObjectHandle dictionary, const std::string& key) {
    return dictionary.isDictionary() ? dictionary.getKey(key) : QPDFObjectHandle::newNull();
}

// Annotations of the copy correspond one to one with the original's, in the same order.
void relinkAnnotations(QPDFObjectHandle original, QPDFObjectHandle copy, const PageCopies& pages) {
    QPDFObjectHandle originals = dictionaryKey(original, "/Annots");
    QPDFObjectHandle copies = dictionaryKey(copy, "/Annots");
    if (!originals.isArray() || !copies.isArray()) return;
    if (originals.getArrayNItems() != copies.getArrayNItems()) return;
    for (int i = 0; i < originals.getArrayNItems(); ++i) {
        QPDFObjectHandle from = originals.getArrayItem(i), to = copies.getArrayItem(i);
        relinkDestination(dictionaryKey(from, "/Dest"), dictionaryKey(to, "/Dest"), pages);
        relinkDestination(dictionaryKey(dictionaryKey(from, "/A"), "/D"),
                          dictionaryKey(dictionaryKey(to, "/A"), "/D"), pages);
    }
}

} // namespace

int appendAllPages(QPDF& destination, QPDF& source) {
    source.pushInheritedAttributesToPage();
    std::vector<QPDFPageObjectHelper> originals = QPDFPageDocumentHelper(source).getAllPages();
    QPDFAcroFormDocumentHelper sourceForms(source), destinationForms(destination);
    const bool hasForms = sourceForms.hasAcroForm();
    std::vector<QPDFObjectHandle> copies;
    PageCopies copyOf;
    for (QPDFPageObjectHelper& page : originals) {
        QPDFObjectHandle original = page.getObjectHandle();
        QPDFObjectHandle copy = destination.copyForeignObject(original);
        if (hasForms) destinationForms.fixCopiedAnnotations(copy, original, sourceForms);
        copyOf.emplace(original.getObjGen(), copy);
        copies.push_back(copy);
    }
    for (std::size_t i = 0; i < copies.size(); ++i)
        relinkAnnotations(originals[i].getObjectHandle(), copies[i], copyOf);
    QPDFPageDocumentHelper destinationPages(destination);
    for (QPDFObjectHandle& copy : copies)
        destinationPages.addPage(copy, false);
    return static_cast<int>(copies.size());
}

} // namespace px::media
