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
    <name>ZYLTPCollisionInspectorWidget</name>
    <message>
        <source>Collision Inspector</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collision avoidance tolerance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show head</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying points collision state</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Avoid collisions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ZX Tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>YZ Tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Searching for collisions...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Execute Collision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Avoid collision failed.</source>
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
    <name>ZYLTPContextualViewWidget</name>
    <message>
        <source>Contextual Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Object Type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Property</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course Link</source>
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
    <message>
        <source>Detail Information</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Object type</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Operation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linking motion</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Property</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Condition</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Apply filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear filter</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please select a property.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please select a condition.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please input value.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please input number value.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invalid value:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Save File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Saving %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unable to save to </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>begins with</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ends with</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>contains</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>does not contain</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>is equal to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>is not equal to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>greater than</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>greater than or equal to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>less than</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>less than or equal to</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>-----------------</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course </source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total machine time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linking time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Approach time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Retract time</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Overall course length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rollers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total tow length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Total course number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Roller</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Approach distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Approach angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Roll-in distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Roll-out distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Retract distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Retract angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feed rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add feed rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cut feed rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Post-processor instructions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Layup time estimate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Used tows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point number</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enabled tows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forced tows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Front/Back tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Side tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Process parameters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off-part motion model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>From course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>To course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %2 %3</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>length</source>
        <translation type="unfinished"></translation>
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
    <message>
        <source>Laying Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QPushButton {
  text-align: left;
  padding: 2px 4px;
  border: none;
  border-bottom: 1px solid palette(mid);
  font-weight: bold;
  icon: url(&quot;@@@unchecked-image@@@&quot;);
}
QPushButton:checked {
  icon: url(&quot;@@@checked-image@@@&quot;);
}</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point Tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forward tilt angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Side tilt angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forward tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Side tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Deselect all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Graph</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>QPushButton {
  text-align: left;
  padding: 2px 4px;
  border: none;
  border-bottom: 1px solid palette(mid);
  font-weight: bold;
  icon: url(&quot;@@@checked-image@@@&quot;);
}
QPushButton:checked {
  icon: url(&quot;@@@unchecked-image@@@&quot;);
}</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collision avoidance distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update collisions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tow control</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Enabled Tows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feed ON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Material feed by tow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feed Ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Material feed rate by tow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select tows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feed ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tow Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Odd tows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Even tows</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Invert</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tows with feed ON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tows with feed OFF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Forward Tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Side Tilt</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Head position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show head</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show collisions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collision detection tolerance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Graph controls</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom In</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom Out</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Zoom all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y axis scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pan</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Center on head position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point.%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The length of start and end range are not equal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>ON</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OFF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Execute Collision</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update collision failed.</source>
        <translation type="unfinished"></translation>
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
    <message>
        <source>Edit Courses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Courses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Order</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reverse all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reverse</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Every other course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All courses</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Break</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Break length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Approach/Retract</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Approach angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Approach distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Roll-in distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Retract angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Retract distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Roll-out distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Feed Rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Laying feed rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Adding feed rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cutting feed rate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Process Parameters</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Row</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>New Column</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>MyPPName</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>integer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Edit Mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Collapse mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reverse course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Break course</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Expand or Collapse All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unlink</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Chain Link</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unlink All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Accept links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mini-toolbar mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Detailed mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Reset links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course.%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Course.%1|Range.%2 (%3)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An internal error occurred. The message was: %1</source>
        <translation type="unfinished"></translation>
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
    <message>
        <source>Edit Linking Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Relative to point</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Insert before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Insert after</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Deselect all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Insert Options</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Number of points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point interpolation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vector interpolation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interpolation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interpolate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mini-toolbar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mini-toolbar mode</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Expand or collapse all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Error</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Point.%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Insert linking points before</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Insert linking points after</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move linking points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete linking points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interpolate linking points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Move linking point</source>
        <translation type="unfinished"></translation>
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
    <name>ZYLTPEditLinksWidget</name>
    <message>
        <source>Edit Links</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Deselect all</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off part motion</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off-part Motion Model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Linear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Safety Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Traverse Box</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Surface Following</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cylindrical</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rotary Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Arc Interpolation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off-part Points Details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tip Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tip Points and Tool Axes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Complete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rapid Approach Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rapid Retract Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Minimize Head Rotation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off-part Avoidance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Disabled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off-part Clearance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Link.%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Warning</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Value %1 out of range: Should be greater than 0mm.
Value %2mm is restored.
Try to edit range...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rapid distances</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off-part motion model</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off-part points details</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPTiltGraphMouseHover</name>
    <message>
        <source>Point.%1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZYLTPTiltGraphSelectionRange</name>
    <message>
        <source>range sizes are not equal</source>
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
