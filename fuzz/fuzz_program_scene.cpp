// SPDX-License-Identifier: LicenseRef-ZYL-Proprietary
// Builds, from a program the reader accepts, everything the first frame of the studio draws,
// without a window: the tessellated ply surface and boundaries, the representations of every
// course, link and break range, and the bounding box the camera is fitted to, which must be
// finite. So a value that passes the reader but breaks the scene is found too.
#include "ZYLTPBreakRangeVisRep.h"
#include "ZYLTPCourse.h"
#include "ZYLTPCourseVisRep.h"
#include "ZYLTPLinkVisRep.h"
#include "ZYLTPProgram.h"
#include "ZYLTPProgramFile.h"
#include "ZYLTPRollLayupProcedure.h"
#include "ZYLTPVisualizationOptions.h"

#include "ZYLGeoAssembledCurveOnSurface.h"
#include "ZYLGeoBody.h"
#include "ZYLGeoRef.h"
#include "ZYLVisOptions.h"
#include "ZYLVisRep.h"
#include "ZYLVisRepFactory.h"

#include <QByteArray>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace {

ZYLMathBoundingBox SceneBox(const ZYLTPProgram &program)
{
    std::vector<std::unique_ptr<ZYLVisRep>> reps;
    ZYLGeoRef<ZYLGeoBody> body(new ZYLGeoBody);
    if (program.GetPlySurface())
        body->AddSurface(program.GetPlySurface());
    for (const ZYLGeoAssembledCurveOnSurface *boundary : program.GetPlyBoundaries())
        for (int i = 0; i < boundary->GetNumCurves(); ++i)
            body->AddCurve(boundary->GetCurve(i));
    reps.emplace_back(ZYLVisRepFactory::CreateRep(body.get(), ZYLVisOptions(), ZYLVisOptions(), ZYLVisOptions(),
                                                  ZYLVisRepFactory::VisibleAll));

    const ZYLTPVisualizationOptions options;
    QList<ZYLVisOptions> out;
    for (int p = 0; p < program.GetNumProcedures(); ++p) {
        const auto *procedure = qobject_cast<const ZYLTPRollLayupProcedure *>(program.GetProcedure(p));
        if (!procedure)
            continue;
        for (int c = 0; c < procedure->GetNumCourses(); ++c) {
            const ZYLTPCourse *course = procedure->GetCourseByIndex(c);
            reps.emplace_back(new ZYLTPCourseVisRep(course, c, options, out));
            for (int r = 0; r < course->GetNumBreakRanges(); ++r)
                reps.emplace_back(new ZYLTPBreakRangeVisRep(course->GetBreakRange(r), options, out));
        }
        for (int l = 0; l < procedure->GetNumLinks(); ++l)
            reps.emplace_back(new ZYLTPLinkVisRep(procedure->GetLinkByIndex(l), options, out));
    }
    ZYLMathBoundingBox box;
    for (const auto &rep : reps)
        box.Add(rep->GetBoundingBox());
    return box;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = QByteArray::fromRawData(reinterpret_cast<const char *>(data), qsizetype(size));
    const ZYLTPProgramFile::LoadResult loaded = ZYLTPProgramFile::Parse(bytes);
    if (!loaded.program)
        return 0;
    const ZYLMathBoundingBox box = SceneBox(*loaded.program);
    if (!box.IsEmpty() && (!box.GetMin().IsFinite() || !box.GetMax().IsFinite()
                             || !std::isfinite(box.GetDiagonal().GetLength()))) {
        std::fprintf(stderr, "accepted program gives a scene box that is not finite\n");
        std::abort();
    }
    return 0;
}
