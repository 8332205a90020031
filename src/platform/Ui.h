#pragma once

#include "config/PXMenuItem.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace px::platform {

// Every prompt the actions show. Calls are made on the main queue and return when the user
// has answered (the dialogs are modal). An absent result means the user cancelled.
class Ui {
  public:
    virtual ~Ui() = default;

    // --- Alerts -------------------------------------------------------------------------
    struct Alert {
        std::string message;              // the bold title
        std::string informative;          // the text under it
        std::vector<std::string> buttons; // titles in order; the first is the default
    };
    // Answers 1000 for the first button, 1001 for the second, ...
    virtual int runAlert(const Alert& alert) = 0;

    // --- Save panel ---------------------------------------------------------------------
    struct SaveRequest {
        std::string directory;          // where the panel starts
        std::string name;               // the proposed file name
        std::string message;            // optional text above the panel
        bool passwordAccessory = false; // shows a password field (compression)
        // The file-type chooser: the entries offered, their indexes in `fileTypes` (the item
        // list) kept; empty when the panel has no chooser. `onTypeChosen` is called with the
        // chosen entry at once for the first offered entry and again on every change.
        PXMenuItem::List fileTypes;
        std::vector<std::size_t> offeredTypeIndexes;
        std::function<void(const PXMenuItem::Ptr&)> onTypeChosen;
    };
    struct SaveResult {
        std::string path;
        std::string password; // empty without the password accessory
    };
    virtual std::optional<SaveResult> runSavePanel(const SaveRequest& request) = 0;

    // --- Open panel ---------------------------------------------------------------------
    struct OpenRequest {
        std::string directory; // where the panel starts
        std::string button;    // the confirm button's title (the prompt)
        std::string message;   // optional text above the panel
        bool chooseFiles = false;
        bool chooseDirectories = true;
    };
    virtual std::optional<std::string> runOpenPanel(const OpenRequest& request) = 0;

    // --- Name entry ---------------------------------------------------------------------
    struct NameRequest {
        std::string tip; // the prompt label
        std::string placeholder;
        std::string defaultText;
        bool required = false; // a blank entry is refused and asked again
    };
    virtual std::optional<std::string> runNameEntry(const NameRequest& request) = 0;

    // --- Embed dialog -------------------------------------------------------------------
    struct EmbedRequest {
        std::string defaultName;        // the folder name field
        std::vector<std::string> modes; // the mode pop-up's titles
    };
    struct EmbedResult {
        int mode = 0; // index into `modes`
        std::string name;
    };
    virtual std::optional<EmbedResult> runEmbedDialog(const EmbedRequest& request) = 0;

    // --- Colour picker ------------------------------------------------------------------
    struct Color {
        double red = 0, green = 0, blue = 0; // 0..1 each
    };
    virtual std::optional<Color> pickColor() = 0;

    // --- Progress window model ----------------------------------------------------------
    // The window is drawn by the host; the model reports to it. `onCancel` is called on the
    // main queue when the user cancels from the window.
    virtual void progressOpen(std::function<void()> onCancel) = 0;
    virtual void progressSetPercent(double fraction) = 0; // 0..1
    virtual void progressSuccess(const std::string& text) = 0;
    virtual void progressClose() = 0;
};

} // namespace px::platform
