// Word as the application that the toolbar control sits in, with its documents.
// Every operation throws Error with the application's own description when it refuses.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "ports/office/Excel.h"
#include "ports/office/HostDocument.h"
#include "ports/office/OfficeHost.h"

namespace krv::ports {

class WordHost;

class WordDocument : public HostDocument {
 public:
    virtual std::shared_ptr<WordHost> Application() = 0;
    // Adds a picture file to the document's shapes. Where it goes, its size and whether it is
    // linked are left to Word.
    virtual void AddPicture(const std::string& fileName) = 0;
};

// A template that is open behind the documents; Word keeps command bars in one.
class WordTemplate {
 public:
    virtual ~WordTemplate() = default;
    // Without changes that Word would ask its user about.
    virtual bool IsSaved() = 0;
    virtual void SetSaved(bool isSaved) = 0;
};

class WordHost : public HostApplication, public OfficeHost {
 public:
    // Word refuses while no document is open.
    virtual std::shared_ptr<WordDocument> ActiveDocument() = 0;
    virtual std::vector<std::shared_ptr<WordTemplate>> Templates() = 0;
};

}  // namespace krv::ports
