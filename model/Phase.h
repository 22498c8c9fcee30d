#pragma once

#include <filesystem>
#include <optional>
#include <string>

namespace stackreel
{

/// What the window is doing. A plain value: two phases are equal if their kinds and their payloads are equal.
class Phase
{
public:
    enum class Kind { empty, preparing, ready, exporting, complete, failed };

    static Phase empty() { return Phase(Kind::empty, {}); }
    static Phase preparing() { return Phase(Kind::preparing, {}); }
    static Phase ready() { return Phase(Kind::ready, {}); }
    static Phase exporting() { return Phase(Kind::exporting, {}); }
    /// An export has finished; `file` is the file that was written.
    static Phase complete(const std::filesystem::path& file) { return Phase(Kind::complete, file.native()); }
    /// Loading or exporting has failed; `message` is shown to the user, UTF-8.
    static Phase failed(std::string message) { return Phase(Kind::failed, std::move(message)); }

    Kind kind() const { return m_kind; }
    /// Whether the loaded source can be edited and exported.
    bool isEditable() const { return m_kind == Kind::ready || m_kind == Kind::complete; }

    /// The status line for this phase, UTF-8. `source` is the loaded file, if any.
    std::string message(const std::optional<std::filesystem::path>& source) const;

    bool operator==(const Phase&) const = default;

private:
    Phase(Kind kind, std::string payload) : m_kind(kind), m_payload(std::move(payload)) {}

    Kind m_kind;
    std::string m_payload; ///< the file's path if `complete`, the message if `failed`, otherwise empty
};

} // namespace stackreel
