#pragma once

#include <cstddef>
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
    struct FileType {
        std::size_t tag = 0;   // what `choose N` names; tags can have gaps
        std::string title;     // shown in the pop-up
        std::string extension; // put on the name when the entry is chosen; may be empty
        std::string icon;      // icon-theme name or file; empty for none
    };
    struct SaveRequest {
        std::string directory;          // where the panel starts
        std::string name;               // the proposed file name
        std::string message;            // optional text above the panel
        bool passwordAccessory = false; // shows a password field (compression)
        // The file-type chooser's entries in order; empty when the panel has no chooser.
        // `onTypeChosen` is called with the chosen entry's tag at once for the first entry and
        // again on every change; a window also puts the entry's extension on the typed name.
        std::vector<FileType> fileTypes;
        std::function<void(std::size_t tag)> onTypeChosen;
        // Whether the panel asks before it answers a path where something already exists
        // (the question is overwriteQuestion(path) of PromptSupport.h). Answering "save PATH"
        // in a script includes saying yes to it.
        bool confirmsOverwrite = true;
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
        // Whether a name may be confirmed; a window keeps its OK button off while it fails.
        // Absent: every name may.
        std::function<bool(const std::string&)> nameCheck;
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

    // --- Progress window ----------------------------------------------------------------
    // The window is drawn by the host; the model (ProgressModel) reports what it shows.
    // `onCancel` is called on the main queue, never inside a Ui call, when the user cancels.
    struct Progress {
        std::string text;               // the line under the bar
        std::optional<double> fraction; // 0..1; absent: the bar runs without a value
        bool cancelShown = false;
        bool success = false; // the success picture instead of the bar
    };
    virtual void progressOpen(std::function<void()> onCancel) = 0;
    virtual void progressShow(const Progress& progress) = 0;
    virtual void progressClose() = 0;
};

} // namespace px::platform
