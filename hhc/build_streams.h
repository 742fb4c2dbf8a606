#pragma once

// The last stage of a compile: the internal streams behind the files.

#include "chm/container_writer.h"
#include "hhc/collect_sources.h"
#include "hhc/compile_context.h"
#include "hhc/compile_files.h"

namespace scrivo {

// Writes the streams that a viewer finds pages, contents, index and words by. False when that
// cannot be done, which has been reported, or when the compile is to be given up.
bool BuildStreams(CompileContext* context, const ProjectSources& sources, TopicFacts* facts,
                  ContainerWriter* writer);

}  // namespace scrivo
