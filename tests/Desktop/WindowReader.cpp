// Reads the windows of a program as a screen reader does and prints a line of JSON for each visible
// element.
//
//   pastewise_window_reader PROCESS-ID
//
// Each has a "role", a "name", whether it is "focused", and its "x", "y", "width" and "height" on
// the screen.
//
// Exit code 1 if no program with that process id can be read.
#include <atspi/atspi.h>
#include <nlohmann/json.hpp>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <span>
#include <string>

namespace {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};

struct GFree {
    void operator()(void* memory) const { g_free(memory); }
};

using Accessible = std::unique_ptr<AtspiAccessible, Unref>;
using Text = std::unique_ptr<gchar, GFree>;

Accessible childOf(AtspiAccessible* parent, int index) {
    return Accessible(atspi_accessible_get_child_at_index(parent, index, nullptr));
}

bool is(AtspiStateType state, AtspiAccessible* accessible) {
    const std::unique_ptr<AtspiStateSet, Unref> states(atspi_accessible_get_state_set(accessible));
    return states && atspi_state_set_contains(states.get(), state) != FALSE;
}

void print(AtspiAccessible* accessible) {
    const Text role(atspi_accessible_get_role_name(accessible, nullptr));
    const Text name(atspi_accessible_get_name(accessible, nullptr));
    nlohmann::json description{{"role", role ? role.get() : ""},
                               {"name", name ? name.get() : ""},
                               {"focused", is(ATSPI_STATE_FOCUSED, accessible)}};
    const std::unique_ptr<AtspiComponent, Unref> component(
        atspi_accessible_get_component_iface(accessible));
    const std::unique_ptr<AtspiRect, GFree> place(
        component ? atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_SCREEN, nullptr)
                  : nullptr);
    if (place) {
        description["x"] = place->x;
        description["y"] = place->y;
        description["width"] = place->width;
        description["height"] = place->height;
    }
    std::puts(description.dump().c_str());
    const int count = atspi_accessible_get_child_count(accessible, nullptr);
    for (int i = 0; i < count; ++i) {
        if (const Accessible child = childOf(accessible, i)) {
            print(child.get());
        }
    }
}

/// Prints the windows of a program.
void printWindows(AtspiAccessible* program) {
    const int count = atspi_accessible_get_child_count(program, nullptr);
    for (int i = 0; i < count; ++i) {
        const Accessible window = childOf(program, i);
        if (window && is(ATSPI_STATE_SHOWING, window.get())) {
            print(window.get());
        }
    }
}

} // namespace

// NOLINTNEXTLINE(bugprone-exception-escape): out of memory may end this program.
int main(int argc, char** argv) {
    const std::span<char*> arguments(argv, static_cast<std::size_t>(argc));
    if (arguments.size() != 2) {
        return EXIT_FAILURE;
    }
    const auto processId =
        static_cast<guint>(std::strtoul(arguments[1], nullptr, 10)); // NOLINT(*-magic-numbers)
    atspi_init();
    const Accessible desktop(atspi_get_desktop(0));
    const int count = atspi_accessible_get_child_count(desktop.get(), nullptr);
    for (int i = 0; i < count; ++i) {
        const Accessible program = childOf(desktop.get(), i);
        if (program && atspi_accessible_get_process_id(program.get(), nullptr) == processId) {
            printWindows(program.get());
            return EXIT_SUCCESS;
        }
    }
    return EXIT_FAILURE;
}
