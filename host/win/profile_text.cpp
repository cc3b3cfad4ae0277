#include "win/profile_text.h"

#include <algorithm>
#include <cstdint>

namespace headless {
namespace {

constexpr std::wstring_view kLineEnd = L"\r\n";

wchar_t asciiLower(wchar_t letter) {
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter + (L'a' - L'A')) : letter;
}

bool isBlank(wchar_t character) { return isProfileBlank(static_cast<char32_t>(character)); }

std::wstring_view withoutLeadingBlanks(std::wstring_view text) {
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    return text;
}

std::wstring_view trimmed(std::wstring_view text) {
    text = withoutLeadingBlanks(text);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::wstring headerLine(std::wstring_view name) {
    return std::wstring(1, L'[').append(name).append(L"]").append(kLineEnd);
}

std::wstring keyLine(std::wstring_view key, std::wstring_view value) {
    return std::wstring(key).append(1, L'=').append(value);
}

} // namespace

std::size_t ProfileText::NameHash::operator()(std::wstring_view name) const noexcept {
    std::uint64_t hash = 0xCBF29CE484222325ULL; // FNV-1a
    for (const wchar_t letter : name) {
        hash = (hash ^ static_cast<std::uint32_t>(asciiLower(letter))) * 0x100000001B3ULL;
    }
    return hash;
}

bool ProfileText::NameEqual::operator()(std::wstring_view left,
                                        std::wstring_view right) const noexcept {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return asciiLower(a) == asciiLower(b); });
}

ProfileText::ProfileText(std::string bytes, unsigned codePage)
    : bytes_(std::move(bytes)), codePage_(codePage),
      encoding_(ProfileEncoding::of(bytes_, codePage)) {
    bytes_.resize(bytes_.size() - bytes_.size() % encoding_.unitSize()); // Half a unit is no text.
    parse();
}

ProfileText::LineText ProfileText::parseLine(std::wstring_view line) {
    line = trimmed(line.substr(0, line.find(L'\0')));
    if (line.empty()) return {};
    const std::size_t bracket = line.front() == L'[' ? line.rfind(L']') : std::wstring_view::npos;
    if (bracket != std::wstring_view::npos) {
        return {LineKind::kHeader, std::wstring(trimmed(line.substr(1, bracket - 1))), {}};
    }
    const std::size_t equals = line.find(L'=');
    LineText text{LineKind::kBare, std::wstring(trimmed(line.substr(0, equals))), {}};
    if (equals != std::wstring_view::npos) {
        text.kind = LineKind::kKey;
        text.value = withoutLeadingBlanks(line.substr(equals + 1));
    }
    // A comment with '=' in it is found by its whole name, so that such a key can be set again.
    if (line.front() == L';') text.kind = LineKind::kComment;
    return text;
}

void ProfileText::parse() {
    byName_.clear();
    sections_.clear();
    const std::size_t begin = encoding_.markSize();
    sections_.push_back({{}, begin, begin, begin, {}, {}});
    byName_.emplace(sections_.back().name, &sections_.back());
    const std::string_view bytes = bytes_;
    for (std::size_t at = begin; at < bytes.size();) {
        const ProfileEncoding::Line line = encoding_.lineAt(bytes, at);
        LineText text = parseLine(encoding_.decode(bytes.substr(at, line.end - at)));
        if (text.kind == LineKind::kHeader) {
            sections_.push_back({std::move(text.name), at, line.next, line.next, {}, {}});
            byName_.emplace(sections_.back().name, &sections_.back());
        } else if (text.kind != LineKind::kBlank) {
            addEntry(sections_.back(), std::move(text), at);
            sections_.back().end = line.next;
        }
        at = line.next;
    }
}

void ProfileText::addEntry(Section& section, LineText text, std::size_t line) {
    Entry& entry = section.entries.emplace_back(Entry{std::move(text), line});
    section.byKey.emplace(entry.text.name, &entry);
}

ProfileText::Section* ProfileText::find(std::wstring_view section) const {
    const auto found = byName_.find(trimmed(section));
    return found == byName_.end() ? nullptr : found->second;
}

ProfileText::Entry* ProfileText::find(const Section& section, std::wstring_view key) {
    const auto found = section.byKey.find(trimmed(key));
    return found == section.byKey.end() ? nullptr : found->second;
}

std::optional<std::wstring_view> ProfileText::value(std::wstring_view section,
                                                    std::wstring_view key) const {
    const Section* const place = find(section);
    const Entry* const entry = place == nullptr ? nullptr : find(*place, key);
    if (entry == nullptr || entry->text.kind == LineKind::kBare) return std::nullopt;
    return entry->text.value;
}

std::wstring ProfileText::sectionNames() const {
    std::wstring names;
    for (const Section& section : sections_) {
        if (!section.name.empty()) names.append(section.name).push_back(L'\0');
    }
    return names;
}

std::optional<std::wstring> ProfileText::keyNames(std::wstring_view section) const {
    const Section* const place = find(section);
    if (place == nullptr || (place->name.empty() && place->entries.empty())) return std::nullopt;
    std::wstring names;
    for (const Entry& entry : place->entries) {
        if (entry.text.kind == LineKind::kKey) names.append(entry.text.name).push_back(L'\0');
    }
    return names;
}

std::optional<std::wstring> ProfileText::lines(std::wstring_view section) const {
    const Section* const place = find(section);
    if (place == nullptr) return std::nullopt;
    std::wstring lines;
    for (const auto& [text, line] : place->entries) {
        if (text.kind == LineKind::kComment) continue;
        lines += text.kind == LineKind::kKey ? keyLine(text.name, text.value) : text.name;
        lines.push_back(L'\0');
    }
    return lines;
}

bool ProfileText::setValue(std::wstring_view section, std::wstring_view key,
                           std::wstring_view value) {
    key = trimmed(key);
    value = withoutLeadingBlanks(value);
    Section* const place = find(section);
    if (place == nullptr) {
        append(headerLine(trimmed(section)).append(keyLine(key, value)).append(kLineEnd));
        return true;
    }
    if (Entry* const entry = find(*place, key)) return replaceValue(*place, *entry, value);
    insertLine(*place, keyLine(key, value));
    return true;
}

bool ProfileText::removeKey(std::wstring_view section, std::wstring_view key) {
    const Section* const place = find(section);
    const Entry* const entry = place == nullptr ? nullptr : find(*place, key);
    if (entry == nullptr) return false;
    const ProfileEncoding::Line line = encoding_.lineAt(bytes_, entry->line);
    bytes_.erase(line.begin, line.next - line.begin);
    parse();
    return true;
}

bool ProfileText::removeSection(std::wstring_view section) {
    const Section* const place = find(section);
    if (place == nullptr) return false;
    const std::size_t size = headerAfter(*place) - place->header;
    bytes_.erase(place->header, size);
    parse();
    return size > 0;
}

bool ProfileText::setLines(std::wstring_view section, const std::vector<std::wstring_view>& lines) {
    std::wstring text;
    for (const std::wstring_view line : lines)
        text.append(line).append(kLineEnd);
    const Section* const place = find(section);
    if (place == nullptr) {
        append(headerLine(trimmed(section)).append(text));
        return true;
    }
    const bool ended = encoding_.beginsLine(bytes_, place->body);
    const std::string added = encoding_.encode(ended ? text : std::wstring(kLineEnd).append(text));
    const std::size_t size = place->end - place->body;
    if (std::string_view(bytes_).substr(place->body, size) == added) return false;
    bytes_.replace(place->body, size, added);
    parse();
    return true;
}

/// The offset at which the section after this one begins, or the file ends.
std::size_t ProfileText::headerAfter(const Section& section) const {
    for (const Section& other : sections_) {
        if (other.header >= section.body && &other != &section) return other.header;
    }
    return bytes_.size();
}

void ProfileText::append(std::wstring_view text) {
    if (!encoding_.beginsLine(bytes_, bytes_.size())) bytes_ += encoding_.encode(kLineEnd);
    bytes_ += encoding_.encode(text);
    parse();
}

/// What one line's bytes say; empty for several lines, a blank one or a section's header, which
/// change more than a section's entries.
std::optional<ProfileText::LineText> ProfileText::singleEntry(std::string_view bytes) const {
    const ProfileEncoding::Line line = encoding_.lineAt(bytes, 0);
    if (line.next != bytes.size()) return std::nullopt;
    LineText text = parseLine(encoding_.decode(bytes.substr(0, line.end)));
    if (text.kind == LineKind::kBlank || text.kind == LineKind::kHeader) return std::nullopt;
    return text;
}

void ProfileText::insertLine(Section& section, std::wstring_view line) {
    const std::size_t at = section.end;
    std::string added = encoding_.encode(std::wstring(line).append(kLineEnd));
    if (!encoding_.beginsLine(bytes_, at)) added.insert(0, encoding_.encode(kLineEnd));
    bytes_.insert(at, added);
    std::optional<LineText> text = singleEntry(added);
    if (!text) {
        parse();
        return;
    }
    moveBehind(section, at, 0, added.size());
    addEntry(section, std::move(*text), at);
}

bool ProfileText::replaceValue(Section& section, Entry& entry, std::wstring_view value) {
    const ProfileEncoding::Line place = encoding_.lineAt(bytes_, entry.line);
    const std::size_t size = place.end - place.begin;
    const std::string_view line = std::string_view(bytes_).substr(place.begin, size);
    const std::size_t offset = encoding_.valueOffset(line);
    std::string changed =
        offset == std::string_view::npos
            ? std::string(encoding_.withoutTrailingBlanks(line)).append(encoding_.encode(L"="))
            : std::string(line.substr(0, offset));
    changed += encoding_.encode(value);
    if (encoding_.withoutTrailingBlanks(changed) == encoding_.withoutTrailingBlanks(line)) {
        return false; // It reads the same.
    }
    bytes_.replace(place.begin, size, changed);
    std::optional<LineText> text = singleEntry(changed);
    if (!text || text->name != entry.text.name) {
        parse();
        return true;
    }
    entry.text.kind = text->kind;
    entry.text.value = std::move(text->value);
    moveBehind(section, place.begin, size, changed.size());
    return true;
}

/// Notes that at `line` in the section `removed` bytes became `added` ones.
void ProfileText::moveBehind(Section& section, std::size_t line, std::size_t removed,
                             std::size_t added) {
    const auto move = [=](std::size_t& offset) { offset = offset - removed + added; };
    const auto moveLines = [&](Section& moved) {
        for (Entry& entry : moved.entries) {
            if (entry.line > line) move(entry.line);
        }
    };
    move(section.end);
    moveLines(section);
    for (Section& other : sections_) {
        if (&other == &section || other.header < line) continue;
        move(other.header);
        move(other.body);
        move(other.end);
        moveLines(other);
    }
}

} // namespace headless
