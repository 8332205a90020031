#include "actions/TransferReport.h"

#include "actions/Alerts.h"
#include "actions/FailureLog.h"
#include "extension/PXCheckPermit.h"
#include "support/FileHash.h"
#include "support/Localization.h"
#include "support/PathName.h"

#include <cerrno>

namespace px::transfer {

namespace {

bool isAccessRefusal(int code) {
    return code == EACCES || code == EPERM || code == EROFS;
}

} // namespace

void reportFailure(const Request& request, const Error& error, const std::string& source,
                   const std::string& folder) {
    logFailure(error);
    if (isAccessRefusal(error.code)) {
        request.permits().accessPrivacy(filehash::isWritable(folder) ? source : folder);
        return;
    }
    alert::alertWithMsg(request.ui(), localized("Error Common Tip") + "\n\n" + error.message);
}

void reportSourceKept(platform::Ui& ui, const std::string& target) {
    logFailure({"will not replace " + target + " with itself", EINVAL});
    alert::alertWithMsg(ui, localizedFormat("Replace Source Tip", path::lastPathComponent(target)));
}

} // namespace px::transfer
