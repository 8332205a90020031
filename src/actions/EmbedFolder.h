#pragma once

#include "support/ErrorOr.h"

#include <optional>
#include <string>
#include <vector>

// Gathering items into a new folder, and the reverse. Every move is a rename(2) that never
// replaces an existing item: an item whose name is taken lands under the first free
// "<name>-<n>" instead. A failure leaves the item where it was; nothing is deleted except the
// emptied folder of an unembed, with its hidden entries.
namespace px::embed {

struct EmbedOutcome {
    std::optional<std::string> folder; // the new folder, once made
    std::optional<Error> folderError;  // why the folder could not be made (nothing moved)
    std::vector<Error> failures;       // one per item that could not be moved
};

// Makes the folder `name` (or the first free "<name>-<n>") in the folder of the first item and
// moves the items into it, in order. With `byExtension`, an item with an extension goes into a
// subfolder named after its lower-cased extension. Nothing happens for an unusable name.
EmbedOutcome embedItems(const std::vector<std::string>& paths, const std::string& name,
                        bool byExtension);

enum class UnembedResult {
    Moved,  // the visible entries moved up and the folder is gone
    Empty,  // nothing visible to move; the folder is kept
    Failed, // an entry could not be moved (or the folder not read); it stops there
};
struct UnembedOutcome {
    UnembedResult result = UnembedResult::Empty;
    std::optional<Error> error; // why it failed, or why the emptied folder stayed
};

// Moves the visible entries of `folder` up beside it, each to the first free name there, and
// then removes the folder with whatever hidden entries it still holds.
UnembedOutcome unembedFolder(const std::string& folder);

} // namespace px::embed
