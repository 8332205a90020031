#include "actions/TransferReport.h"

#include "actions/Alerts.h"
#include "actions/FailureLog.h"
#include "actions/FileHash.h"
#include "actions/PathName.h"
#include "config/Localization.h"
#include "support/PXCheckPermit.h"

#include <cerrno>

namespace px::transfer {

namespace {

bool isAccessRefusal(int code) {
    return code == EACCES || code == EPERM || code == EROFS;
}

} // namespace

void reportFailure(const Error& error, const std::string& source, const std::string& folder) {
    logFailure(error);
    if (isAccessRefusal(error.code)) {
        PXCheckPermit::accessPrivacy(filehash::isWritable(folder) ? source : folder);
        return;
    }
    alert::alertWithMsg(localized("Error Common Tip") + "\n\n" + error.message);
}

void reportSourceKept(const std::string& target) {
    logFailure({"will not replace " + target + " with itself", EINVAL});
    alert::alertWithMsg(localizedFormat("Replace Source Tip", path::lastPathComponent(target)));
}

} // namespace px::transfer
