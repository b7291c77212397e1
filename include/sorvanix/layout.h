/* The byte layout of the contract, held at compile time: offsets on 32-bit and on 64-bit builds.
 *
 * The 32-bit column is the format. The 64-bit column is the same order of fields with
 * pointers of eight bytes at their natural alignment.
 */
#ifndef SORVANIX_LAYOUT_H
#define SORVANIX_LAYOUT_H

#include <assert.h>
#include <sorvanix/host_api.h>

#define SORVANIX_ON_32_OR_64(on32, on64) (sizeof(void*) == 4 ? (on32) : (on64))
#define SORVANIX_SIZE(record, on32, on64)                                   \
  static_assert(sizeof(record) == SORVANIX_ON_32_OR_64(on32, on64), #record \
                " has changed its "                                         \
                "size")
#define SORVANIX_FIELD(record, field, on32, on64)                            \
  static_assert(offsetof(record, field) == SORVANIX_ON_32_OR_64(on32, on64), \
                #record "::" #field " has moved")

SORVANIX_SIZE(Vector, 12, 12);
SORVANIX_SIZE(Matrix, 48, 48);

/* Fifteen words. */
SORVANIX_SIZE(ShaderRecord, 60, 120);
SORVANIX_FIELD(ShaderRecord, Alloc, 4, 8);
SORVANIX_FIELD(ShaderRecord, Free, 8, 16);
SORVANIX_FIELD(ShaderRecord, Copy, 12, 24);
SORVANIX_FIELD(ShaderRecord, Compare, 16, 32);
SORVANIX_FIELD(ShaderRecord, Read, 20, 40);
SORVANIX_FIELD(ShaderRecord, Write, 24, 48);
SORVANIX_FIELD(ShaderRecord, Edit, 28, 56);
SORVANIX_FIELD(ShaderRecord, GetInfo, 32, 64);
SORVANIX_FIELD(ShaderRecord, Message, 36, 72);
SORVANIX_FIELD(ShaderRecord, InitRender, 40, 80);
SORVANIX_FIELD(ShaderRecord, FreeRender, 44, 88);
SORVANIX_FIELD(ShaderRecord, Output, 48, 96);
SORVANIX_FIELD(ShaderRecord, reserved52, 52, 104);
SORVANIX_FIELD(ShaderRecord, reserved56, 56, 112);

SORVANIX_SIZE(ShaderInstance, 12, 24);
SORVANIX_FIELD(ShaderInstance, data, 0, 0);
SORVANIX_FIELD(ShaderInstance, slots, 4, 8);
SORVANIX_FIELD(ShaderInstance, channel, 8, 16);

SORVANIX_SIZE(ChannelSample, 56, 64);
SORVANIX_FIELD(ChannelSample, uvw, 0, 0);
SORVANIX_FIELD(ChannelSample, normal, 12, 12);
SORVANIX_FIELD(ChannelSample, delta, 24, 24);
SORVANIX_FIELD(ChannelSample, time, 36, 36);
SORVANIX_FIELD(ChannelSample, texFlags, 40, 40);
SORVANIX_FIELD(ChannelSample, render, 44, 48);
SORVANIX_FIELD(ChannelSample, blurOffset, 48, 56);
SORVANIX_FIELD(ChannelSample, blurScale, 52, 60);

SORVANIX_SIZE(RenderInit, 8, 16);
SORVANIX_FIELD(RenderInit, render, 0, 0);
SORVANIX_FIELD(RenderInit, document, 4, 8);

SORVANIX_SIZE(RayRecord, 48, 48);
SORVANIX_FIELD(RayRecord, origin, 0, 0);
SORVANIX_FIELD(RayRecord, direction, 24, 24);

SORVANIX_SIZE(TextureTag, 128, 144);
SORVANIX_FIELD(TextureTag, matrix1, 0, 0);
SORVANIX_FIELD(TextureTag, matrix2, 48, 48);
SORVANIX_FIELD(TextureTag, flags, 96, 96);
SORVANIX_FIELD(TextureTag, flags2, 97, 97);
SORVANIX_FIELD(TextureTag, projection, 98, 98);
SORVANIX_FIELD(TextureTag, opaqueByte, 99, 99);
SORVANIX_FIELD(TextureTag, offsetU, 100, 100);
SORVANIX_FIELD(TextureTag, offsetV, 104, 104);
SORVANIX_FIELD(TextureTag, lengthU, 108, 108);
SORVANIX_FIELD(TextureTag, lengthV, 112, 112);
SORVANIX_FIELD(TextureTag, opaque, 116, 120);

SORVANIX_SIZE(UvwRecord, 148, 148);
SORVANIX_FIELD(UvwRecord, uvw, 0, 0);
SORVANIX_FIELD(UvwRecord, corner, 48, 48);
SORVANIX_FIELD(UvwRecord, restCorner, 96, 96);
SORVANIX_FIELD(UvwRecord, cornerCount, 144, 144);

SORVANIX_SIZE(ObjectRecord, 60, 64);
SORVANIX_FIELD(ObjectRecord, kind, 0, 0);
SORVANIX_FIELD(ObjectRecord, type, 4, 4);
SORVANIX_FIELD(ObjectRecord, matrix, 8, 8);
SORVANIX_FIELD(ObjectRecord, object, 56, 56);

SORVANIX_SIZE(LightRecord, 100, 100);
SORVANIX_FIELD(LightRecord, ambient, 0, 0);
SORVANIX_FIELD(LightRecord, noDiffuse, 4, 4);
SORVANIX_FIELD(LightRecord, noSpecular, 8, 8);
SORVANIX_FIELD(LightRecord, type, 12, 12);
SORVANIX_FIELD(LightRecord, contrast, 16, 16);
SORVANIX_FIELD(LightRecord, colour, 20, 20);
SORVANIX_FIELD(LightRecord, position, 32, 32);
SORVANIX_FIELD(LightRecord, direction, 44, 44);
SORVANIX_FIELD(LightRecord, innerAngle, 56, 56);
SORVANIX_FIELD(LightRecord, outerAngle, 60, 60);
SORVANIX_FIELD(LightRecord, falloff, 64, 64);
SORVANIX_FIELD(LightRecord, range, 68, 68);
SORVANIX_FIELD(LightRecord, castShadows, 72, 72);
SORVANIX_FIELD(LightRecord, areaU, 76, 76);
SORVANIX_FIELD(LightRecord, areaW, 88, 88);

SORVANIX_SIZE(ParticleRecord, 16, 16);
SORVANIX_FIELD(ParticleRecord, position, 0, 0);
SORVANIX_FIELD(ParticleRecord, flags, 12, 12);
SORVANIX_SIZE(PolygonRecord, 16, 16);
SORVANIX_FIELD(PolygonRecord, a, 0, 0);
SORVANIX_FIELD(PolygonRecord, b, 4, 4);
SORVANIX_FIELD(PolygonRecord, c, 8, 8);
SORVANIX_FIELD(PolygonRecord, d, 12, 12);

SORVANIX_SIZE(RenderContext, 372, 392);
SORVANIX_FIELD(RenderContext, bumpTint, 24, 24);
SORVANIX_FIELD(RenderContext, hitPoint, 72, 72);
SORVANIX_FIELD(RenderContext, bumpNormal, 84, 84);
SORVANIX_FIELD(RenderContext, ray, 96, 96);
SORVANIX_FIELD(RenderContext, faceNormal, 100, 104);
SORVANIX_FIELD(RenderContext, baseNormal, 112, 116);
SORVANIX_FIELD(RenderContext, viewPoint, 148, 152);
SORVANIX_FIELD(RenderContext, lightParamA, 164, 168);
SORVANIX_FIELD(RenderContext, textureTag, 168, 176);
SORVANIX_FIELD(RenderContext, side, 172, 184);
SORVANIX_FIELD(RenderContext, tangentU, 176, 188);
SORVANIX_FIELD(RenderContext, tangentV, 188, 200);
SORVANIX_FIELD(RenderContext, lightCount, 200, 212);
SORVANIX_FIELD(RenderContext, lightParamB, 212, 224);
SORVANIX_FIELD(RenderContext, lightsEnabled, 216, 228);
SORVANIX_FIELD(RenderContext, filteringOn, 220, 232);
SORVANIX_FIELD(RenderContext, footprintA, 224, 236);
SORVANIX_FIELD(RenderContext, footprintB, 236, 248);
SORVANIX_FIELD(RenderContext, footprintC, 248, 260);
SORVANIX_FIELD(RenderContext, object, 260, 272);
SORVANIX_FIELD(RenderContext, uvwRecord, 264, 280);
SORVANIX_FIELD(RenderContext, localHitPoint, 320, 340);
SORVANIX_FIELD(RenderContext, filterScale, 368, 388);

/* No pointer inside: the same bytes on every build. */
SORVANIX_SIZE(FootprintBlock, 248, 248);
SORVANIX_FIELD(FootprintBlock, footprint, 0, 0);
SORVANIX_FIELD(FootprintBlock, footprintRadius, 48, 48);
SORVANIX_FIELD(FootprintBlock, pointOffset, 60, 60);
SORVANIX_FIELD(FootprintBlock, uvwPoint, 72, 72);
SORVANIX_FIELD(FootprintBlock, uvwDelta, 84, 84);
SORVANIX_FIELD(FootprintBlock, uvwOffset, 96, 96);
SORVANIX_FIELD(FootprintBlock, basePoint, 108, 108);
SORVANIX_FIELD(FootprintBlock, baseDelta, 120, 120);
SORVANIX_FIELD(FootprintBlock, baseOffset, 132, 132);
SORVANIX_FIELD(FootprintBlock, tap, 144, 144);
SORVANIX_FIELD(FootprintBlock, texMatrix, 148, 148);
SORVANIX_FIELD(FootprintBlock, texInverse, 196, 196);
SORVANIX_FIELD(FootprintBlock, outerChannel, 244, 244);

/* Thirty-six words, numbered. */
#define SORVANIX_WORD(field, number) SORVANIX_FIELD(HostApi, field, 4 * (number), 8 * (number))
SORVANIX_SIZE(HostApi, 4 * 36, 8 * 36);
SORVANIX_WORD(version, 0);
SORVANIX_WORD(general, 1);
SORVANIX_WORD(render, 2);
SORVANIX_WORD(stream, 3);
SORVANIX_WORD(container, 4);
SORVANIX_WORD(string, 5);
SORVANIX_WORD(dialog, 6);
SORVANIX_WORD(channel, 8);
SORVANIX_WORD(filename, 9);
SORVANIX_WORD(file, 12);
SORVANIX_WORD(dialogForm, 13);
SORVANIX_WORD(resources, 15);
SORVANIX_WORD(object, 16);
SORVANIX_WORD(material, 17);
SORVANIX_WORD(document, 18);
SORVANIX_WORD(documentList, 19);
SORVANIX_WORD(thread, 20);
SORVANIX_WORD(bitmap, 21);
SORVANIX_WORD(matrix, 22);

#undef SORVANIX_WORD
#undef SORVANIX_FIELD
#undef SORVANIX_SIZE
#undef SORVANIX_ON_32_OR_64

#endif
