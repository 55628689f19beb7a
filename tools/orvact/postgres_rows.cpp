#include "postgres_rows.h"

#include <algorithm>
#include <array>
#include <bit>
#include <span>

#include "event_parameters.h"

namespace Postgres {

namespace {

// Appends fields to the data of a copy: each behind its size, numbers with the high byte first.
class Fields {
public:
    explicit Fields(std::string& data) : data_(data) {}

    template <class T>
    void Raw(T number)
    {
        char bytes[sizeof number];
        for (std::size_t at = 0; at < sizeof number; ++at) {
            bytes[at] = static_cast<char>(number >> 8 * (sizeof number - 1 - at));
        }
        data_.append(bytes, sizeof bytes);
    }

    void Bytes(std::string_view bytes)
    {
        Raw(static_cast<std::uint32_t>(bytes.size()));
        data_ += bytes;
    }

    void operator()(std::int32_t number) { Number(static_cast<std::uint32_t>(number)); }
    void operator()(std::int64_t number) { Number(static_cast<std::uint64_t>(number)); }
    void operator()(double number) { Number(std::bit_cast<std::uint64_t>(number)); }
    void operator()(std::nullptr_t) { Raw(0xFFFFFFFFu); }
    // A text of the server has no zero in it; the image has all that was there.
    void operator()(std::u16string_view wide)
    {
        std::string text = orv::ToUtf8(wide);
        for (std::size_t at = 0; (at = text.find('\0', at)) != std::string::npos;) text.replace(at, 1, "\uFFFD");
        Bytes(text);
    }

private:
    template <class T>
    void Number(T number)
    {
        Raw(static_cast<std::uint32_t>(sizeof number));
        Raw(number);
    }

    std::string& data_;
};

// Columns with an index first, as rows are compared from there on.
const std::array<const EventColumn*, kColumnCount> kCopied = [] {
    std::array<const EventColumn*, kColumnCount> columns;
    for (std::size_t i = 0; i < kColumnCount; ++i) columns[i] = &kEventColumns[i];
    std::stable_partition(columns.begin(), columns.end(),
                          [](const EventColumn* column) { return IsAskedFor(*column); });
    return columns;
}();

// Microseconds since the year 2000, as the server counts.
std::int64_t ServerTime(std::int64_t milliseconds)
{
    constexpr std::int64_t kBegin = 946'684'800'000;
    return (milliseconds - kBegin) * 1000;
}

}  // namespace

std::string CopiedColumns()
{
    std::string list = "Id, Sequence, Recorder, Stored, Code";
    for (const EventColumn* column : kCopied) list += std::string(", ") + column->name;
    return list + ", Name, Image, Parameters";
}

void CopiedRows::Add(const NewEvent& event)
{
    constexpr std::uint16_t kFields = 5 + kColumnCount + 3;
    if (rows_.empty()) stored_ = event.stored;
    const std::size_t begin = data_.size();
    Fields fields(data_);
    fields.Raw(kFields);
    fields(std::int64_t{0});  // the numbers come when the batch is sent
    fields(std::int64_t{0});
    fields(recorder_);
    fields(ServerTime(event.stored));
    fields(std::int64_t{event.record.code});
    for (const EventColumn* column : kCopied) VisitColumn(event.record, *column, fields);
    fields(std::u16string_view(event.action.Name()));
    fields.Bytes(event.image);
    const std::string parameters = ParametersWithoutColumn(event.action);
    if (parameters.empty()) {
        fields(nullptr);
    } else {
        fields.Bytes("\1" + parameters);  // the version of the format in front of the text
    }
    const std::int32_t* channel = event.record.int32Field[0];
    rows_.push_back({std::uint64_t{event.record.code} << 32 | (channel ? static_cast<std::uint32_t>(*channel) : 0),
                     begin, data_.size() - begin});
}

void CopiedRows::Number(std::int64_t first, std::int64_t firstId, std::int64_t idStep)
{
    first_ = first;
    firstId_ = firstId;
    std::string numbers;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        numbers.clear();
        Fields fields(numbers);
        fields(firstId + static_cast<std::int64_t>(row) * idStep);
        fields(first + static_cast<std::int64_t>(row));
        data_.replace(rows_[row].begin + sizeof(std::uint16_t), numbers.size(), numbers);
    }
    // A few thousand at a time: the tree of the numbers is met in order too, and sorting takes less.
    constexpr std::size_t kNear = 4096;
    for (std::size_t at = 0; at < rows_.size(); at += kNear) {
        const std::span near = std::span(rows_).subspan(at, std::min(kNear, rows_.size() - at));
        std::sort(near.begin(), near.end(), [this](const Place& a, const Place& b) {
            return a.key != b.key ? a.key < b.key : Keys(a) < Keys(b);
        });
    }
}

void CopiedRows::Clear()
{
    EventBatch::Clear();
    rows_.clear();
}

// From the columns with an index on; what follows them matters little.
std::string_view CopiedRows::Keys(const Place& row) const
{
    constexpr std::size_t kBefore = 2 + 12 + 12 + 8 + 12 + 12;
    return std::string_view(data_).substr(row.begin + kBefore, row.size - kBefore);
}

void CopiedRows::Send(const Put& put) const
{
    constexpr std::size_t kPiece = 1 << 16;
    std::string piece("PGCOPY\n\377\r\n\0\0\0\0\0\0\0\0\0", 11 + 8);  // no flags, no extension
    for (const Place& row : rows_) {
        for (std::string_view rest = std::string_view(data_).substr(row.begin, row.size); !rest.empty();) {
            const std::string_view part = rest.substr(0, kPiece - piece.size());
            piece += part;
            rest.remove_prefix(part.size());
            if (piece.size() < kPiece) continue;
            put(piece);
            piece.clear();
        }
    }
    Fields(piece).Raw(std::uint16_t{0xFFFF});
    put(piece);
}

}  // namespace Postgres
