#include "dxf/header_reader.h"

#include "db/database.h"
#include "db/residence.h"
#include "dxf/value_check.h"
#include "win/state.h"

namespace headless {
namespace {

constexpr int kVariableName = 9;

/// The values of one variable, checked; a copy, as the record's groups are not ours.
std::vector<DxfTag> checkedValues(ReadContext& context, std::string_view name,
                                  std::span<const DxfTag> values) {
    std::vector<DxfTag> checked(values.begin(), values.end());
    for (DxfTag& tag : checked) {
        if (const auto problem = checkValue(tag)) {
            context.report.add(tag.position, 0,
                               "variable " + std::string(name) + ": " + std::string(*problem));
        }
    }
    return checked;
}

std::string stated(const HeaderVariables& variables, std::string_view name, int code) {
    const DxfTag* const tag = variables.find(name, code);
    return tag == nullptr ? std::string() : std::string(tag->text());
}

void chooseEncoding(ReadContext& context) {
    const HeaderVariables& variables = context.db.headerVariables();
    DxfSource& source = context.source;
    source.version = stated(variables, "$ACADVER", 1);
    source.codePage = stated(variables, "$DWGCODEPAGE", 3);

    bool known = true;
    source.decoder = TextDecoder::forFile(source.version, source.codePage,
                                          WinState::current().ansiCodePage, known);
    context.filer.setDecoder(source.decoder);
    if (!known) {
        context.report.add(variables.find("$DWGCODEPAGE", 3)->position, 0,
                           "code page " + quote(source.codePage) +
                               " is not known; texts are read "
                               "as UTF-8 or as code page " +
                               std::to_string(source.decoder.codePage()));
    }
}

} // namespace

void readHeaderVariables(ReadContext& context, std::span<const DxfTag> groups) {
    std::size_t at = 0;
    while (at < groups.size() && groups[at].code != kVariableName)
        ++at;
    if (at == groups.size()) return;

    HeaderVariables& variables = context.db.headerVariables();
    while (at < groups.size()) {
        const std::string_view name = groups[at].text();
        std::size_t end = at + 1;
        while (end < groups.size() && groups[end].code != kVariableName)
            ++end;
        variables.set(name, checkedValues(context, name, groups.subspan(at + 1, end - at - 1)));
        at = end;
    }
    chooseEncoding(context);
    if (const DxfTag* const seed = variables.find("$HANDSEED", 5)) {
        Residence::raiseHandleSeed(context.db, seed->handle());
    }
}

} // namespace headless
