#include "db/transaction_manager.h"

ACRX_CONS_DEFINE_MEMBERS(AcTransaction, AcRxObject, 0)
ACRX_CONS_DEFINE_MEMBERS(AcDbTransactionManager, AcRxObject, 0)

AcTransaction* AcDbTransactionManager::startTransaction() {
    return open_.emplace_back(std::make_unique<AcTransaction>()).get();
}

Acad::ErrorStatus AcDbTransactionManager::endTransaction() {
    if (open_.empty()) return Acad::eInvalidInput;
    open_.pop_back();
    return Acad::eOk;
}
