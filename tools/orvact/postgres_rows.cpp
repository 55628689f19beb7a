#include "postgres_rows.h"

#include <bit>

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

// Microseconds since the year 2000, as the server counts.
std::int64_t ServerTime(std::int64_t milliseconds)
{
    constexpr std::int64_t kBegin = 946'684'800'000;
    return (milliseconds - kBegin) * 1000;
}

}  // namespace

std::string CopiedColumns()
{
    std::string list = "Id, Sequence, Recorder, Stored, Name, Code";
    for (const EventColumn& column : kEventColumns) list += std::string(", ") + column.name;
    return list + ", Image, Parameters";
}

CopiedRows::CopiedRows(std::int32_t recorder) : recorder_(recorder), data_("PGCOPY\n\377\r\n\0", 11)
{
    data_.append(8, '\0');  // no flags, no extension
}

void CopiedRows::Add(const NewEvent& event)
{
    constexpr std::uint16_t kFields = 6 + kColumnCount + 2;
    if (rows_.empty()) stored_ = event.stored;
    rows_.push_back(data_.size());
    Fields fields(data_);
    fields.Raw(kFields);
    fields(std::int64_t{0});  // the numbers come when the batch is sent
    fields(std::int64_t{0});
    fields(recorder_);
    fields(ServerTime(event.stored));
    fields(std::u16string_view(event.action.Name()));
    fields(std::int64_t{event.record.code});
    for (const EventColumn& column : kEventColumns) VisitColumn(event.record, column, fields);
    fields.Bytes(event.image);
    const std::string parameters = ParametersWithoutColumn(event.action);
    if (parameters.empty()) return fields(nullptr);
    fields.Bytes("\1" + parameters);  // the version of the format in front of the text
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
        data_.replace(rows_[row] + sizeof(std::uint16_t), numbers.size(), numbers);
    }
    Fields(data_).Raw(std::uint16_t{0xFFFF});
}

}  // namespace Postgres
