#pragma once

#include <algorithm>
#include <array>

namespace lullwick {

/// The heights a widget gave for the last few widths it was asked about. A layout asks a widget
/// for its height at the same widths again and again (its width, its least width, and more) each
/// time anything on the page changes; the widget forgets the heights when its contents change.
class HeightCache {
public:
    /// The height for `width`: remembered, or computed by `compute` and remembered.
    template <typename Compute> int at(int width, Compute compute)
    {
        for (const Entry &entry : m_entries) {
            if (entry.width == width)
                return entry.height;
        }
        const int height = compute(width);
        std::move_backward(m_entries.begin(), m_entries.end() - 1, m_entries.end());
        m_entries[0] = {width, height};
        return height;
    }
    void clear() { m_entries = {}; }

private:
    struct Entry {
        int width = -1;
        int height = 0;
    };
    std::array<Entry, 4> m_entries{};
};

} // namespace lullwick
