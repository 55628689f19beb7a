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
    void operator()(std::nullptr_t) {}  // left out, see Send
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

constexpr std::uint32_t kParameters = 1u << kColumnCount;  // the bit of the parameters without a column
static_assert(kColumnCount < 32);
constexpr std::size_t kNumbersSize = 12 + 12 + 8 + 12 + 12;  // id, sequence, recorder, time and code
constexpr std::size_t kAlwaysFilled = 5 + 2;                 // these, the name and the image
constexpr std::string_view kNull = "\377\377\377\377";

// Of the field that begins here.
std::size_t SizeOf(std::string_view field)
{
    std::size_t size = 0;
    for (std::size_t at = 0; at < sizeof(std::uint32_t); ++at) size = size << 8 | static_cast<unsigned char>(field[at]);
    return size;
}

// Data of any length as pieces of one.
class Pieces {
public:
    explicit Pieces(const CopiedRows::Put& put) : put_(put) { piece_.reserve(kPiece); }

    void Add(std::string_view data)
    {
        while (piece_.size() + data.size() >= kPiece) {
            const std::size_t room = kPiece - piece_.size();
            piece_ += data.substr(0, room);
            data.remove_prefix(room);
            End();
        }
        piece_ += data;
    }
    void End()
    {
        put_(piece_);
        piece_.clear();
    }

private:
    static constexpr std::size_t kPiece = 1 << 16;

    const CopiedRows::Put& put_;
    std::string piece_;
};

// Microseconds since the year 2000, as the server counts.
std::int64_t ServerTime(std::int64_t milliseconds)
{
    constexpr std::int64_t kBegin = 946'684'800'000;
    return (milliseconds - kBegin) * 1000;
}

}  // namespace

void CopiedRows::Add(const NewEvent& event)
{
    if (rows_.empty()) stored_ = event.stored;
    Place row{};
    row.begin = data_.size();
    Fields fields(data_);
    fields(std::int64_t{0});  // the numbers come when the batch is sent
    fields(std::int64_t{0});
    fields(recorder_);
    fields(ServerTime(event.stored));
    fields(std::int64_t{event.record.code});
    for (std::size_t i = 0; i < kColumnCount; ++i) {
        const std::size_t before = data_.size();
        VisitColumn(event.record, *kCopied[i], fields);
        if (data_.size() != before) row.filled |= 1u << i;
    }
    fields(std::u16string_view(event.action.Name()));
    fields.Bytes(event.image);
    const std::string parameters = ParametersWithoutColumn(event.action);
    if (!parameters.empty()) {
        fields.Bytes("\1" + parameters);  // the version of the format in front of the text
        row.filled |= kParameters;
    }
    row.size = data_.size() - row.begin;
    const std::int32_t* channel = event.record.int32Field[0];
    row.key = std::uint64_t{event.record.code} << 32 | (channel ? static_cast<std::uint32_t>(*channel) : 0);
    filled_ |= row.filled;
    rows_.push_back(row);
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
        data_.replace(rows_[row].begin, numbers.size(), numbers);
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
    filled_ = 0;
}

std::string CopiedRows::Columns() const
{
    std::string list = "Id, Sequence, Recorder, Stored, Code";
    for (std::size_t i = 0; i < kColumnCount; ++i) {
        if (filled_ & 1u << i) list += std::string(", ") + kCopied[i]->name;
    }
    list += ", Name, Image";
    return filled_ & kParameters ? list + ", Parameters" : list;
}

// From the columns with an index on; what follows them matters little.
std::string_view CopiedRows::Keys(const Place& row) const
{
    return std::string_view(data_).substr(row.begin + kNumbersSize, row.size - kNumbersSize);
}

// A column that no row of the batch fills is not sent: the server takes its time for each, filled or not.
void CopiedRows::Send(const Put& put) const
{
    Pieces pieces(put);
    pieces.Add({"PGCOPY\n\377\r\n\0\0\0\0\0\0\0\0\0", 11 + 8});  // no flags, no extension
    std::string fieldCount;
    Fields(fieldCount).Raw(static_cast<std::uint16_t>(kAlwaysFilled + std::popcount(filled_)));
    for (const Place& row : rows_) {
        std::string_view rest = std::string_view(data_).substr(row.begin, row.size);
        const auto add = [&](std::size_t size) {
            pieces.Add(rest.substr(0, size));
            rest.remove_prefix(size);
        };
        const auto addField = [&] { add(sizeof(std::uint32_t) + SizeOf(rest)); };
        pieces.Add(fieldCount);
        add(kNumbersSize);
        for (std::size_t i = 0; i < kColumnCount; ++i) {
            if (row.filled & 1u << i) {
                addField();
            } else if (filled_ & 1u << i) {
                pieces.Add(kNull);
            }
        }
        addField();  // the name
        addField();  // the image
        if (row.filled & kParameters) {
            addField();
        } else if (filled_ & kParameters) {
            pieces.Add(kNull);
        }
    }
    pieces.Add("\377\377");
    pieces.End();
}

}  // namespace Postgres
