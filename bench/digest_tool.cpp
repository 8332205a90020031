// Prints a file's digest the way the coreutils tools do ("<hex>  <path>"), for timing side by
// side with them: digest_tool md5|sha1|sha256|sha512 FILE...
#include "media/Digest.h"

#include <cstdio>
#include <map>
#include <string>

int main(int argc, char** argv) {
    using px::digest::Algorithm;
    const std::map<std::string, Algorithm> names{{"md5", Algorithm::MD5},
                                                 {"sha1", Algorithm::SHA1},
                                                 {"sha256", Algorithm::SHA256},
                                                 {"sha512", Algorithm::SHA512}};
    auto chosen = argc >= 3 ? names.find(argv[1]) : names.end();
    if (chosen == names.end()) {
        std::fprintf(stderr, "usage: %s md5|sha1|sha256|sha512 FILE...\n", argv[0]);
        return 2;
    }
    int status = 0;
    px::digest::Context context(chosen->second);
    for (int i = 2; i < argc; ++i) {
        auto text = px::digest::digestOfFile(argv[i], context);
        if (text.isError()) {
            std::fprintf(stderr, "%s\n", text.error().message.c_str());
            status = 1;
            continue;
        }
        std::printf("%s  %s\n", text.value().c_str(), argv[i]);
    }
    return status;
}
