// Answers the office's questions while nobody is there to.
#pragma once

#include <string>

#include <com/sun/star/task/XInteractionAbort.hpp>
#include <com/sun/star/task/XInteractionHandler.hpp>
#include <cppuhelper/implbase1.hxx>

namespace headless::excel {

/// Breaks off whatever it is asked about, and remembers whether that was a password.
class RefusedQuestions final
    : public cppu::WeakImplHelper1<com::sun::star::task::XInteractionHandler> {
public:
    void SAL_CALL
    handle(const com::sun::star::uno::Reference<com::sun::star::task::XInteractionRequest>& request)
        override {
        namespace uno = com::sun::star::uno;
        using com::sun::star::task::XInteractionAbort;
        const rtl::OUString kind = request->getRequest().getValueTypeName();
        if (kind.indexOf("Password") >= 0) askedPassword_ = true;
        for (const auto& way : request->getContinuations()) {
            const uno::Reference<XInteractionAbort> abort(way, uno::UNO_QUERY);
            if (abort.is()) return abort->select();
        }
    }

    [[nodiscard]] bool askedPassword() const { return askedPassword_; }

private:
    bool askedPassword_ = false;
};

} // namespace headless::excel
