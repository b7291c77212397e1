#include "host/scene/scene_services.h"

#include "host/scene/document_tables.h"
#include "host/scene/object_table.h"

namespace sorvanix::host {

void InstallScenes(HostTables& tables) {
  InstallObjects(tables.object);
  InstallMaterials(tables.material);
  InstallDocuments(tables.document, tables.documentList);
}

}  // namespace sorvanix::host
