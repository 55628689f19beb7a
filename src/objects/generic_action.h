// An action without a name that carries the channels and contacts of an occurrence; match actions build actions from
// it. It has no text, binary or JSON form: a store gives an empty result.
#pragma once

#include <cstdint>
#include <string>

#include "objects/action.h"

namespace OrvPLC {

struct GenericChannel {
    std::uint64_t id = 0;
    std::u16string name;
    std::uint32_t number = 0;

    GenericChannel() = default;
    explicit GenericChannel(const TOrvChannelValue* value);  // null gives the empty record
    bool operator==(const GenericChannel& other) const = default;
};

struct GenericKind {
    std::uint32_t kind;
    std::u16string text;
};

class TOrvGenericAction final : public TOrvAction {
public:
    struct Content {
        GenericChannel videoInput;
        GenericChannel videoOutput;
        GenericChannel inputContact;
        GenericChannel outputContact;
        std::uint32_t value = 0;
    };
    static TOrvGenericAction* Create(Content content, std::uint32_t count = 1);

    TOrvMessage* Clone() const override;  // the parameter map of the clone is empty, deliberately
    void WriteJson(TOrvJsonWriter&, const std::uint32_t*) const override {}
    void WritePlainText(TOrvPlainTextWriter&) const override {}
    void WriteTechnicalText(TOrvTechnicalTextWriter&) const override {}
    void WriteBinary(TOrvBinaryCursor&) const override {}

    // Three places of the table that nothing uses; they keep the ones behind them where callers of the table find them.
    virtual bool Unused0() const { return false; }
    virtual std::uint32_t Unused1() const { return 0; }
    virtual void Unused2() const {}
    virtual const GenericKind* GetGenericKind() const;
    // Null when the record is empty.
    virtual const GenericChannel* GetGenericVideoInput() const;
    virtual const GenericChannel* GetGenericVideoOutput() const;
    virtual const GenericChannel* GetGenericInputContact() const;
    virtual const GenericChannel* GetGenericOutputContact() const;
    virtual std::uint32_t GetGenericInt32() const;

private:
    TOrvGenericAction(Content content, std::uint32_t count, const Block& block);

    Content content_;
};

}  // namespace OrvPLC
