<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>CLS_WgtTreeWidget</name>
    <message>
        <source>Form</source>
        <translation>Resource tree</translation>
    </message>
    <message>
        <source>msg_no_results</source>
        <translation>No results</translation>
    </message>
    <message>
        <source>acc_search_input</source>
        <translation>Search</translation>
    </message>
    <message>
        <source>acc_search_input_desc</source>
        <translation>Type part of a name to find rows in the tree. Down moves to the results, Escape clears the search.</translation>
    </message>
    <message>
        <source>acc_search_result</source>
        <translation>Search results</translation>
    </message>
    <message>
        <source>acc_search_result_desc</source>
        <translation>Rows whose names match the search. Return goes to the row, Up on the first result returns to the search line, Escape clears the search.</translation>
    </message>
    <message>
        <source>acc_btn_clear</source>
        <translation>Clear search</translation>
    </message>
    <message>
        <source>acc_btn_clear_desc</source>
        <translation>Empties the search line and closes the results.</translation>
    </message>
    <message>
        <source>acc_btn_search</source>
        <translation>Start search</translation>
    </message>
    <message>
        <source>acc_btn_search_desc</source>
        <translation>Searches the tree for the text in the search line.</translation>
    </message>
</context>
<context>
    <name>CLS_WgtItemToolBar</name>
    <message>
        <source>acc_item_btn_desc</source>
        <translation>Acts on the row of this button.</translation>
    </message>
</context>
<context>
    <name>QObject</name>
    <message>
        <source>lbl_car_calor_white</source>
        <translation>White</translation>
    </message>
    <message>
        <source>lbl_car_calor_red</source>
        <translation>Red</translation>
    </message>
    <message>
        <source>lbl_car_calor_yellow</source>
        <translation>Yellow</translation>
    </message>
    <message>
        <source>lbl_car_calor_blue</source>
        <translation>Blue</translation>
    </message>
    <message>
        <source>lbl_car_calor_green</source>
        <translation>Green</translation>
    </message>
    <message>
        <source>lbl_car_calor_purple</source>
        <translation>Purple</translation>
    </message>
    <message>
        <source>lbl_car_calor_black</source>
        <translation>Black</translation>
    </message>
    <message>
        <source>lbl_car_calor_grey</source>
        <translation>Grey</translation>
    </message>
    <message>
        <source>lbl_car_calor_cyan</source>
        <translation>Cyan</translation>
    </message>
    <message>
        <source>lbl_car_calor_brown</source>
        <translation>Brown</translation>
    </message>
</context>
<context>
    <name>CLS_TreeAccessibility</name>
    <message>
        <source>acc_tree_desc</source>
        <translation>Arrow keys move between rows. Ctrl+Right moves to the buttons of the current row, Escape returns to the row.</translation>
    </message>
    <message>
        <source>acc_header_name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>acc_header_buttons</source>
        <translation>Buttons</translation>
    </message>
    <message>
        <source>acc_buttons_name</source>
        <translation>Buttons: %1</translation>
    </message>
    <message>
        <source>acc_no_buttons</source>
        <translation>No buttons</translation>
    </message>
    <message>
        <source>acc_buttons_desc</source>
        <translation>Ctrl+Right on the row moves to these buttons, Escape returns.</translation>
    </message>
    <message>
        <source>acc_row_branch</source>
        <translation>Group, %1 rows</translation>
    </message>
    <message>
        <source>acc_part_checked</source>
        <translation>partly checked</translation>
    </message>
    <message>
        <source>acc_words_part_checked</source>
        <translation>%1, partly checked</translation>
    </message>
</context>
<context>
    <name>CLS_DeviceTreeAccessible</name>
    <message>
        <source>acc_separator</source>
        <translation>, </translation>
    </message>
    <message>
        <source>acc_counts</source>
        <translation>%1 of %2 channels on line</translation>
    </message>
    <message>
        <source>acc_state_online</source>
        <translation>on line</translation>
    </message>
    <message>
        <source>acc_state_offline</source>
        <translation>off line</translation>
    </message>
    <message>
        <source>acc_state_no_video</source>
        <translation>no video</translation>
    </message>
    <message>
        <source>acc_state_fault</source>
        <translation>fault</translation>
    </message>
    <message>
        <source>acc_kind_group</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>acc_kind_host</source>
        <translation>Recorder</translation>
    </message>
    <message>
        <source>acc_kind_channel</source>
        <translation>Channel</translation>
    </message>
    <message>
        <source>acc_kind_alarm_in</source>
        <translation>Alarm input</translation>
    </message>
    <message>
        <source>acc_kind_alarm_out</source>
        <translation>Alarm output</translation>
    </message>
    <message>
        <source>acc_kind_middleware</source>
        <translation>Middleware host</translation>
    </message>
    <message>
        <source>acc_kind_matrix</source>
        <translation>Matrix</translation>
    </message>
    <message>
        <source>acc_kind_matrix_in</source>
        <translation>Matrix input</translation>
    </message>
    <message>
        <source>acc_kind_matrix_out</source>
        <translation>Matrix output</translation>
    </message>
    <message>
        <source>acc_kind_map</source>
        <translation>Map</translation>
    </message>
    <message>
        <source>acc_kind_decoder</source>
        <translation>Decoder</translation>
    </message>
    <message>
        <source>acc_kind_decoder_out</source>
        <translation>Decoder output</translation>
    </message>
    <message>
        <source>acc_kind_decoder_area</source>
        <translation>Decoder output area</translation>
    </message>
    <message>
        <source>acc_kind_screen_out</source>
        <translation>Screen output</translation>
    </message>
    <message>
        <source>acc_kind_decoder_in</source>
        <translation>Decoder input</translation>
    </message>
    <message>
        <source>acc_kind_tv_wall</source>
        <translation>TV wall layout</translation>
    </message>
    <message>
        <source>acc_kind_plan_group</source>
        <translation>Plan group</translation>
    </message>
    <message>
        <source>acc_kind_plan</source>
        <translation>Plan</translation>
    </message>
    <message>
        <source>acc_kind_door_server</source>
        <translation>Door server</translation>
    </message>
    <message>
        <source>acc_kind_resource</source>
        <translation>Resource</translation>
    </message>
</context>
</TS>
