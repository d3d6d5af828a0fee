<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>ZYLTPCollisionInspectorCmd</name>
    <message>
        <source>Collision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View Collision Information</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPContextualViewCmd</name>
    <message>
        <source>Contextual</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View Contextual Toolpath</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPDetailedInfoCmd</name>
    <message>
        <source>Detailed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View Detailed Info</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPDetailedInfoWidget</name>
    <message>
        <source>ProcedureLinkModel</source>
        <translation>Procedure link</translation>
    </message>
    <message>
        <source>CustomModel</source>
        <translation>Custom</translation>
    </message>
    <message>
        <source>SafetyPlaneModel</source>
        <translation>Safety plane</translation>
    </message>
    <message>
        <source>LinearModel</source>
        <translation>Linear</translation>
    </message>
</context>
<context>
    <name>ZYLTPEditCourseCmd</name>
    <message>
        <source>Edit Course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edits course</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPEditCourseLayingPointsCmd</name>
    <message>
        <source>Laying Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edits the laying points of a course</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPEditCourseLayingPointsWidget</name>
    <message>
        <source>toolBar</source>
        <translation>Tool bar</translation>
    </message>
    <message>
        <source>ExpandCollapseAll</source>
        <translation>Expand or collapse all</translation>
    </message>
</context>
<context>
    <name>ZYLTPEditCourseWidget</name>
    <message>
        <source>ExpandCollapseALL</source>
        <translation>Expand or collapse all</translation>
    </message>
    <message>
        <source>ChainLink</source>
        <translation>Chain link</translation>
    </message>
    <message>
        <source>UnlinkAll</source>
        <translation>Unlink all</translation>
    </message>
    <message>
        <source>WrongNumStarts</source>
        <translation>More than one course has no link leading to it. Link the courses into one chain before accepting.</translation>
    </message>
    <message>
        <source>WrongNumEnds</source>
        <translation>More than one course has no link leaving it. Link the courses into one chain before accepting.</translation>
    </message>
</context>
<context>
    <name>ZYLTPEditLinkingPointsCmd</name>
    <message>
        <source>Linking Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit linking points</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPEditLinkingPointsWidget</name>
    <message>
        <source>toolBar</source>
        <translation>Tool bar</translation>
    </message>
</context>
<context>
    <name>ZYLTPEditLinksCmd</name>
    <message>
        <source>Links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit links</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPUnavailableWidget</name>
    <message>
        <source>This editor is not available in this build yet.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLToolPathViewCmd</name>
    <message>
        <source>Toolpath (Course)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View tool path course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Toolpath (Polyline)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View tool path course polyline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Toolpath (Course And Polyline)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View tool path course and polyline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide Toolpath</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide toolpath</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying Points (Tool Axis)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View laying points with tool axis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying Points (Tool Axis + Laying Direction)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View laying points with tool and laying axes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying Points (All Axes)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide Laying Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide laying points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Links (Points Only)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show links with points only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Links (Tool Axis)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show links with roller axis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Links (All Axes)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show links with all axes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide Course Links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide course links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linking Points Only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View linking points only</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linking Points (Tool Axis)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linking Points (Tool Axis + Laying Direction)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>View linking points with tool and laying axes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linking Points (All Axes)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide Linking Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Hide linking points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Surface</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show/Hide surface</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Ply Boundary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show/Hide ply boundary</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Machine Head</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show/Hide machine head</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Roller</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show/Hide roller</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
