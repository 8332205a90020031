#pragma once

#include <glib-object.h>
#include <glib.h>
#include <memory>

// Owners for the GLib objects and buffers the program holds, each released the GLib way.
namespace px::glib {

struct ObjectUnref {
    void operator()(gpointer object) const {
        if (object) g_object_unref(object);
    }
};
struct ErrorFree {
    void operator()(GError* error) const {
        if (error) g_error_free(error);
    }
};
struct Free {
    void operator()(gpointer memory) const { g_free(memory); }
};

// A GObject of type T held by one reference.
template <typename T> using Object = std::unique_ptr<T, ObjectUnref>;
using Error = std::unique_ptr<GError, ErrorFree>;
// A string GLib allocated.
using String = std::unique_ptr<gchar, Free>;

// A GError out-parameter that owns what it receives: `call(..., error.out())`.
class ErrorSlot {
  public:
    GError** out() { return &m_error; }
    ~ErrorSlot() { ErrorFree{}(m_error); }
    ErrorSlot() = default;
    ErrorSlot(const ErrorSlot&) = delete;
    ErrorSlot& operator=(const ErrorSlot&) = delete;
    explicit operator bool() const { return m_error != nullptr; }
    const char* message() const { return m_error ? m_error->message : "unknown failure"; }

  private:
    GError* m_error = nullptr;
};

} // namespace px::glib
