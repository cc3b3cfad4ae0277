// An office that is driven over UNO, through a pipe of its own and with settings of its own.
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <map>
#include <memory>
#include <thread>

#include <unistd.h>

#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/DisposedException.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>

#include "excel/office.h"
#include "excel/workbook_error.h"
#include "office/office_document.h"
#include "office/office_folder.h"
#include "office/office_process.h"
#include "office/office_text.h"

namespace headless::excel {
namespace {

namespace fs = std::filesystem;
namespace uno = com::sun::star::uno;
namespace frame = com::sun::star::frame;
using com::sun::star::lang::XComponent;
using rtl::OUString;
using std::chrono::milliseconds;

constexpr const char* kBuiltWith = ORN_OFFICE_PROGRAMS "/soffice.bin";

/// What this process needs to talk to an office.
class LocalContext {
public:
    LocalContext() {
        rtl::Bootstrap::set("URE_MORE_TYPES", "file://" ORN_OFFICE_PROGRAMS "/types/offapi.rdb");
        context_ = cppu::defaultBootstrap_InitialComponentContext();
    }
    ~LocalContext() {
        const uno::Reference<XComponent> context(context_, uno::UNO_QUERY);
        if (context.is()) context->dispose();
    }
    LocalContext(const LocalContext&) = delete;
    LocalContext& operator=(const LocalContext&) = delete;

    [[nodiscard]] auto resolver() const {
        return com::sun::star::bridge::UnoUrlResolver::create(context_);
    }

private:
    uno::Reference<uno::XComponentContext> context_;
};

class UnoOffice final : public Office {
public:
    explicit UnoOffice(const OfficeOptions& options) : options_(options) {
        const std::string program = options.program.empty() ? kBuiltWith : options.program;
        if (access(program.c_str(), X_OK) != 0)
            throw WorkbookError("LibreOffice is not installed: there is no " + program);
        // On its first start an office may only set itself up and ask to be started again.
        constexpr int kStartAgain = 81;
        if (!start(program) && (process_->exitCode() != kStartAgain || !start(program)))
            throw WorkbookError("LibreOffice did not start: it ended with status " +
                                std::to_string(process_->exitCode()));
    }

    ~UnoOffice() override {
        shown_.clear();
        if (desktop_.is() && process_->runs()) {
            constexpr milliseconds kLongEnd{5000};
            const auto ended = std::async(std::launch::async, [this] { terminate(); });
            if (ended.wait_for(kLongEnd) != std::future_status::ready ||
                !process_->endsWithin(kLongEnd))
                process_->kill();
        }
        desktop_.clear();
        process_->kill();
    }

    const std::string& folder() const override { return folder_.path(); }

    bool runs() override { return process_->runs(); }

    OfficeViews convert(const OfficeFile& from, const OfficeFile& to) override {
        OfficeViews views;
        within(options_.workLimit, [&] {
            const OfficeDocument document(desktop_, from, false);
            document.useOneFont();
            document.calculate();
            views = document.views();
            document.store(to);
        });
        return views;
    }

    void show(const OfficeFile& file) override {
        within(options_.workLimit, [&] {
            shown_.erase(file.path);
            shown_[file.path] = std::make_unique<OfficeDocument>(desktop_, file, true);
        });
    }

private:
    [[nodiscard]] std::string pipe() const { return fs::path(folder_.path()).filename().string(); }

    /// False when the program ended before it could be reached.
    bool start(const std::string& program) {
        std::vector<std::string> arguments = {"--norestore",
                                              "--nologo",
                                              "--nodefault",
                                              "--nolockcheck",
                                              "--nofirststartwizard",
                                              "--accept=pipe,name=" + pipe() + ";urp;",
                                              "-env:UserInstallation=file://" + folder_.path() +
                                                  "/profile"};
        if (!options_.visible) arguments.insert(arguments.begin(), {"--headless", "--invisible"});
        process_ = std::make_unique<OfficeProcess>(
            OfficeStart{program, arguments, folder_.path(), folder_.held()});
        connect("uno:pipe,name=" + wide(pipe()) + ";urp;StarOffice.ComponentContext");
        return desktop_.is();
    }

    void connect(const OUString& address) {
        const auto resolver = local_.resolver();
        const auto end = std::chrono::steady_clock::now() + options_.startLimit;
        while (process_->runs()) {
            try {
                const uno::Reference<uno::XComponentContext> remote(resolver->resolve(address),
                                                                    uno::UNO_QUERY_THROW);
                noteSockets();
                within(options_.startLimit, [&] { desktop_ = frame::Desktop::create(remote); });
                return;
            } catch (const com::sun::star::connection::NoConnectException&) {
                constexpr milliseconds kBetweenTries{50};
                std::this_thread::sleep_for(kBetweenTries);
            }
            if (std::chrono::steady_clock::now() > end) {
                noteSockets();
                process_->kill();
                throw WorkbookError("LibreOffice did not answer in " +
                                    seconds(options_.startLimit) + " after its start");
            }
        }
    }

    /// It takes them away itself unless it is ended.
    void noteSockets() const {
        for (const std::string& file : process_->socketFiles())
            folder_.add(file);
    }

    static std::string seconds(std::chrono::seconds time) {
        return std::to_string(time.count()) + " s";
    }

    void terminate() {
        try {
            desktop_->terminate();
        } catch (const uno::Exception&) {
            // It goes so fast that the answer is lost.
        }
    }

    /// Runs calls of the office; one that does not come back ends with the office's process.
    void within(std::chrono::seconds limit, const std::function<void()>& calls) {
        std::future<void> done = std::async(std::launch::async, calls);
        const bool late = done.wait_for(limit) != std::future_status::ready;
        if (late) process_->kill();
        try {
            done.get();
        } catch (const com::sun::star::lang::DisposedException&) {
            throw WorkbookError(late ? "LibreOffice did not answer in " + seconds(limit) +
                                           " and was ended"
                                     : "LibreOffice ended while it worked");
        } catch (const uno::Exception& error) {
            throw WorkbookError("LibreOffice refused: " + narrow(error.Message));
        }
    }

    OfficeOptions options_;
    OfficeFolder folder_;
    std::unique_ptr<OfficeProcess> process_;
    LocalContext local_;
    uno::Reference<frame::XDesktop2> desktop_;
    std::map<std::string, std::unique_ptr<OfficeDocument>> shown_; ///< By the paths of their files.
};

} // namespace

extern "C" Office* ornStartOffice(const OfficeOptions& options) { return new UnoOffice(options); }

} // namespace headless::excel
