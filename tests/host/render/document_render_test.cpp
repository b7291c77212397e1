// A preview as the module makes it: through the tables alone.
#include "host/render/document_render.h"

#include <gtest/gtest.h>

#include "host/channels/bitmap.h"
#include "host/scene/document_tables.h"
#include "host/scene/object_table.h"
#include "tests/host/render/real_module.h"

namespace sorvanix::host {
namespace {

constinit bool tellsToStop = false;

struct PreviewHost {
  Host host{{.services = {[](HostTables& tables) {
               InstallNoiseServices(tables.render);
               InstallShadingServices(tables.render);
               InstallChannelLinks(tables.channel, tables.stream);
               InstallBitmaps(tables.bitmap);
               InstallObjects(tables.object);
               InstallMaterials(tables.material);
               InstallDocuments(tables.document, tables.documentList);
               tables.thread.mustStop = [](const HostThread*) noexcept {
                 return tellsToStop ? 1 : 0;
               };
               InstallDocumentRender(tables);
             }}}};
  Module module = *Module::Load(host, SORVANIX_MODULE_PATH);
  LinkedShaders linked{module.Shaders()};
  const HostTables& tables = host.Tables();
};

/// One of the module's preview scenes with a shader in the luminance channel of its object, in a
/// bitmap of 64 x 64.
struct Preview : PreviewHost {
  explicit Preview(std::int32_t pluginId) {
    const Filename file(SORVANIX_SOURCE_FOLDER "/module/resources/Preview_Sphere_C.c4d");
    document = tables.documentList.load(file.Handle());
    HostMaterial* material = tables.material.create(MaterialTypeStandard);
    tables.material.enableChannel(material, ChannelLuminance, 1);
    tables.material.enableChannel(material, ChannelColour, 0);
    tables.material.enableChannel(material, ChannelSpecularColour, 0);
    Container shader;
    shader.Set(KeyLinkPluginId, Word{pluginId});
    tables.channel.message(tables.material.channel(material, ChannelLuminance),
                           MessageSetParameters, shader.Handle());
    tables.document.insertMaterial(document, material);
    const Text name("Object");
    HostObject* object = tables.document.findObject(document, name.Handle());
    HostTag* tag = tables.object.makeTag(object, TagTypeTexture);
    tables.object.setTagMaterial(tag, material);
    bitmap.Init(64, 64);
  }
  ~Preview() { tables.documentList.free(document); }

  std::int32_t Render(const Container& settings, HostThread* thread = nullptr) {
    return tables.document.render(document, bitmap.Handle(), settings.Handle(), thread);
  }

  HostDocument* document = nullptr;
  Bitmap bitmap;
};

Container SizeOf(Word width, Word height, Word quality = 0) {
  Container settings;
  settings.Set(KeyRenderWidth, width);
  settings.Set(KeyRenderHeight, height);
  settings.Set(KeyRenderQuality, quality);
  return settings;
}

TEST(DocumentRender, ShowsTheShaderOnTheObject) {
  Preview preview(PluginIdBuffy);
  ASSERT_NE(preview.document, nullptr);
  EXPECT_EQ(preview.Render(SizeOf(64, 64)), 0);
  EXPECT_EQ(preview.bitmap.At(32, 32), (Bitmap::Pixel{255, 255, 255}));
}

TEST(DocumentRender, StaysWithinTheBitmap) {
  Preview preview(PluginIdBuffy);
  EXPECT_EQ(preview.Render(SizeOf(5000000, 64)), 0);
  EXPECT_EQ(preview.bitmap.At(32, 32), (Bitmap::Pixel{255, 255, 255}));
  EXPECT_EQ(preview.Render(SizeOf(-3, 0)), 0);  // no size at all is that of the bitmap
  EXPECT_EQ(preview.Render(Container()), 0);
}

TEST(DocumentRender, ASmallerPictureIsInTheCorner) {
  Preview preview(PluginIdBuffy);
  EXPECT_EQ(preview.Render(SizeOf(16, 16)), 0);
  EXPECT_EQ(preview.bitmap.At(8, 8), (Bitmap::Pixel{255, 255, 255}));
  EXPECT_EQ(preview.bitmap.At(40, 40), (Bitmap::Pixel{0, 0, 0}));
}

TEST(DocumentRender, FullQualitySmoothsEdges) {
  Preview preview(PluginIdBuffy);
  preview.Render(SizeOf(64, 64, 0));
  const auto rim = [&] {
    int between = 0;
    for (int x = 0; x < 64; ++x) {
      const int red = preview.bitmap.At(x, 32)[0];
      between += red > 100 && red < 250 ? 1 : 0;
    }
    return between;
  };
  const int rough = rim();
  preview.Render(SizeOf(64, 64, 2));
  EXPECT_GT(rim(), rough);
}

TEST(DocumentRender, ARunningPreviewStopsWhenItIsTold) {
  Preview preview(PluginIdNoise2D);
  int thread = 0;
  tellsToStop = true;
  EXPECT_NE(preview.Render(SizeOf(64, 64), reinterpret_cast<HostThread*>(&thread)), 0);
  tellsToStop = false;
  EXPECT_EQ(preview.bitmap.At(32, 32), (Bitmap::Pixel{0, 0, 0}));  // left as it was
  EXPECT_EQ(preview.Render(SizeOf(64, 64), reinterpret_cast<HostThread*>(&thread)), 0);
}

TEST(DocumentRender, NothingToRenderIsNoSuccess) {
  Preview preview(PluginIdBuffy);
  const DocumentTable& table = preview.tables.document;
  EXPECT_NE(table.render(nullptr, preview.bitmap.Handle(), nullptr, nullptr), 0);
  EXPECT_NE(table.render(preview.document, nullptr, nullptr, nullptr), 0);
  Bitmap empty;
  EXPECT_NE(table.render(preview.document, empty.Handle(), nullptr, nullptr), 0);
  EXPECT_EQ(table.render(preview.document, preview.bitmap.Handle(), nullptr, nullptr), 0);
}

}  // namespace
}  // namespace sorvanix::host
