#include "platform/files/file_reference_form.h"

#include <atomic>

namespace platform {

namespace {

std::atomic<FileReferenceForm*> currentForm { nullptr };

}

FileReferenceForm* FileReferenceForm::current()
{
    return currentForm.load(std::memory_order_acquire);
}

void FileReferenceForm::use(FileReferenceForm* form)
{
    currentForm.store(form, std::memory_order_release);
}

}
