#include "archive/ZipSourceBridge.h"

#include <cerrno>
#include <zip.h>

namespace px::archive {

namespace {

struct Bridge {
    std::unique_ptr<EntrySource> source;
    std::time_t modificationTime;
    ZipHandle::Hooks& hooks;
    zip_error_t error{};
    bool atEnd = false;
};

zip_int64_t fail(Bridge& bridge, Error error, int zipCode) {
    zip_error_set(&bridge.error, zipCode, error.code);
    if (!bridge.hooks.sourceError) bridge.hooks.sourceError = std::move(error);
    return -1;
}

zip_int64_t openSource(Bridge& bridge) {
    bridge.atEnd = false;
    if (auto opened = bridge.source->open(); opened.isError())
        return fail(bridge, opened.releaseError(), ZIP_ER_OPEN);
    return 0;
}

zip_int64_t readSource(Bridge& bridge, void* data, zip_uint64_t length) {
    if (bridge.hooks.checkCancelled()) {
        zip_error_set(&bridge.error, ZIP_ER_CANCELLED, 0);
        return -1;
    }
    auto got = bridge.source->read({static_cast<std::byte*>(data), length});
    if (got.isError()) return fail(bridge, got.releaseError(), ZIP_ER_READ);
    bridge.atEnd = got.value() == 0;
    return static_cast<zip_int64_t>(got.value());
}

zip_int64_t closeSource(Bridge& bridge) {
    bridge.source->close();
    if (bridge.atEnd && bridge.hooks.itemFinished) bridge.hooks.itemFinished();
    return 0;
}

// The size decides whether libzip gives the entry Zip64 records; the time becomes its DOS date.
zip_int64_t statSource(Bridge& bridge, void* data, zip_uint64_t length) {
    auto* stat = ZIP_SOURCE_GET_ARGS(zip_stat_t, data, length, &bridge.error);
    if (stat == nullptr) return -1;
    zip_stat_init(stat);
    stat->size = bridge.source->size();
    stat->mtime = bridge.modificationTime;
    stat->valid |= ZIP_STAT_SIZE | ZIP_STAT_MTIME;
    return sizeof(zip_stat_t);
}

zip_int64_t callback(void* state, void* data, zip_uint64_t length, zip_source_cmd_t command) {
    auto& bridge = *static_cast<Bridge*>(state);
    switch (command) {
    case ZIP_SOURCE_OPEN:
        return openSource(bridge);
    case ZIP_SOURCE_READ:
        return readSource(bridge, data, length);
    case ZIP_SOURCE_CLOSE:
        return closeSource(bridge);
    case ZIP_SOURCE_STAT:
        return statSource(bridge, data, length);
    case ZIP_SOURCE_ERROR:
        return zip_error_to_data(&bridge.error, data, length);
    case ZIP_SOURCE_FREE:
        zip_error_fini(&bridge.error);
        delete &bridge;
        return 0;
    case ZIP_SOURCE_SUPPORTS:
        return zip_source_make_command_bitmap(ZIP_SOURCE_OPEN, ZIP_SOURCE_READ, ZIP_SOURCE_CLOSE,
                                              ZIP_SOURCE_STAT, ZIP_SOURCE_ERROR, ZIP_SOURCE_FREE,
                                              -1);
    default:
        zip_error_set(&bridge.error, ZIP_ER_OPNOTSUPP, 0);
        return -1;
    }
}

} // namespace

zip_source_t* makeZipSource(zip_t* zip, std::unique_ptr<EntrySource> source,
                            std::time_t modificationTime, ZipHandle::Hooks& hooks) {
    auto* bridge = new Bridge{std::move(source), modificationTime, hooks};
    zip_error_init(&bridge->error);
    zip_source_t* result = zip_source_function(zip, &callback, bridge);
    if (result == nullptr) {
        zip_error_fini(&bridge->error);
        delete bridge;
    }
    return result;
}

} // namespace px::archive
