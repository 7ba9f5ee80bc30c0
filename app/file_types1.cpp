#include "app/file_types1.hpp"

#include <memory>

namespace drav {
namespace {

std::unique_ptr<FileType> pText;
std::vector<FileType*> pAllFileTypes;
std::vector<std::vector<std::string>> registered;

}  // namespace

void FileType::Register() {
  if (registered_) return;
  registered.push_back({Name, MacCreator, MacType, Extensions, UTI});
  registered_ = true;
}

const std::vector<std::vector<std::string>>& RegisteredFileTypes() { return registered; }

namespace FileTypes1 {

FileType* Text() { return pText.get(); }
const std::vector<FileType*>& All() { return pAllFileTypes; }

namespace internal {

void Initialize() {
  if (pText) return;
  pText = std::make_unique<FileType>();
  pText->Name = "text/plain";  // the name holds the MIME form; MimeType stays empty
  pText->Extensions = ".txt, dat";
  pText->MacType = "TEXT";
  pText->MacCreator = "????";
  pText->MimeType = "";
  pText->Imported = true;
  pText->ConformsTo = "public.data, public.content";
  pText->UTI = "public.text";
  pAllFileTypes.push_back(pText.get());
  Text()->Register();
}

}  // namespace internal
}  // namespace FileTypes1
}  // namespace drav
