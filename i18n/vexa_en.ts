<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>%n map inside</numerusform>
            <numerusform>%n maps inside</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>NavButton</name>
    <message>
        <source>%1 (%2)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>OldMapsCard</name>
    <message>
        <source>Old maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go back</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RegionDetails</name>
    <message>
        <source>Download</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On this device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>%n map inside</numerusform>
            <numerusform>%n maps inside</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Waiting for a network</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Details</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Install</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n file</numerusform>
            <numerusform>%n files</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>%1: %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>As the system</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Light</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Dark</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Off</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Errors</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Information too</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Everything</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On this device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>%n map</numerusform>
            <numerusform>%n maps</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>City index</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>%n city package</numerusform>
            <numerusform>%n city packages</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Content server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>%n map to choose from</numerusform>
            <numerusform>%n maps to choose from</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>This app</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Log</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Under way</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resume</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Pause</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Try again</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Go on</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Stop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Versions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>In use</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Newer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>On the server</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Free space</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
