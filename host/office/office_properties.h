// Lists of named values, as the office's calls take them.
#pragma once

#include <initializer_list>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/uno/Sequence.hxx>

namespace headless::excel {

template <class Item>
com::sun::star::uno::Sequence<Item> sequence(std::initializer_list<Item> items) {
    return {items.begin(), static_cast<sal_Int32>(items.size())};
}

inline com::sun::star::beans::PropertyValue property(const char* name,
                                                     const com::sun::star::uno::Any& value) {
    return {rtl::OUString::createFromAscii(name), 0, value,
            com::sun::star::beans::PropertyState_DIRECT_VALUE};
}

} // namespace headless::excel
