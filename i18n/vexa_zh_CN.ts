<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="zh_CN">
<context>
    <name>Banner</name>
    <message>
        <source>Close the message</source>
        <translation>关闭消息</translation>
    </message>
</context>
<context>
    <name>BrowseRow</name>
    <message>
        <source>Try %1 again</source>
        <translation>重试%1</translation>
    </message>
    <message>
        <source>Install %1</source>
        <translation>安装%1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>取消%1</translation>
    </message>
</context>
<context>
    <name>BusyMark</name>
    <message>
        <source>Please wait</source>
        <translation>请稍候</translation>
    </message>
</context>
<context>
    <name>CatalogRefresher</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>无法创建文件夹 %1。</translation>
    </message>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>无法连接到 %1，或者它不是地图服务器。</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 未提供可用的地图版本。</translation>
    </message>
    <message>
        <source>The server does not deliver %1.</source>
        <translation>服务器未提供 %1。</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions; the old one stays.</source>
        <translation>服务器上的 %1 已损坏或不含任何区域；将保留旧文件。</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>无法写入 %1。</translation>
    </message>
</context>
<context>
    <name>ConfirmDialog</name>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
</context>
<context>
    <name>DataSetLock</name>
    <message>
        <source>The folder %1 cannot be made.</source>
        <translation>无法创建文件夹 %1。</translation>
    </message>
    <message>
        <source>The lock file %1 cannot be written.</source>
        <translation>无法写入锁定文件 %1。</translation>
    </message>
    <message>
        <source>Another program (process %1) is at work on this map data. Try again when it is done.</source>
        <translation>另一个程序（进程 %1）正在处理此地图数据。请等它完成后再试。</translation>
    </message>
</context>
<context>
    <name>DataSetSwap</name>
    <message>
        <source>An update that was cut short was finished: the new maps are in use.</source>
        <translation>中断的更新已完成：正在使用新地图。</translation>
    </message>
    <message>
        <source>An update that was cut short could not be finished: the old maps are in use.</source>
        <translation>中断的更新无法完成：正在使用旧地图。</translation>
    </message>
    <message>
        <source>Going back to the old maps was cut short and is finished now.</source>
        <translation>之前中断的旧地图恢复现已完成。</translation>
    </message>
    <message>
        <source>Going back to the old maps could not be finished: the new maps are in use.</source>
        <translation>无法完成旧地图的恢复：正在使用新地图。</translation>
    </message>
    <message>
        <source>A removal that was cut short was finished.</source>
        <translation>中断的删除已完成。</translation>
    </message>
    <message>
        <source>Voice data that a removal had set aside is in its place again.</source>
        <translation>删除时移开的语音数据已放回原处。</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short and cannot be brought to an end.</source>
        <translation>地图数据的替换被中断，且无法完成。</translation>
    </message>
    <message>
        <source>What was in the way is now called %1.</source>
        <translation>占用位置的内容现已改名为 %1。</translation>
    </message>
    <message>
        <source>The map data is being loaded or changed. Try again when that is done.</source>
        <translation>地图数据正在载入或更改。请等完成后再试。</translation>
    </message>
    <message>
        <source>The exchange of the map data could not be brought to an end: %1</source>
        <translation>无法完成地图数据的替换：%1</translation>
    </message>
    <message>
        <source>The map data could not be exchanged, and is as it was before: %1</source>
        <translation>无法替换地图数据，数据保持原样：%1</translation>
    </message>
    <message>
        <source>The shell did not move every folder; the rest was moved without it.</source>
        <translation>Shell 未能移动所有文件夹；其余的已直接移动。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>“%1”不能用作数据集名称的后缀。</translation>
    </message>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>地图数据的替换被中断。请先重新启动程序。</translation>
    </message>
</context>
<context>
    <name>DataSetUpdate</name>
    <message>
        <source>The server has been silent for %1 s; giving up.</source>
        <translation>服务器已有 %1 秒没有响应；已放弃。</translation>
    </message>
    <message>
        <source>An update is under way.</source>
        <translation>正在更新。</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>没有可恢复的备份。</translation>
    </message>
    <message>
        <source>Installs are pending (%1).</source>
        <translation>有待完成的安装（%1）。</translation>
    </message>
    <message>
        <source>Regions were installed since and are not in the backup: %1.</source>
        <translation>之后安装的区域不在备份中：%1。</translation>
    </message>
    <message>
        <source>The city index and the state of the update cannot be written.</source>
        <translation>无法写入城市索引和更新状态。</translation>
    </message>
    <message>
        <source>An earlier change of the maps was cut short and has to be repaired first.</source>
        <translation>之前对地图的更改被中断，必须先修复。</translation>
    </message>
    <message>
        <source>The folder %1 has letters in its name that the commands of an update cannot take.</source>
        <translation>文件夹 %1 的名称含有更新命令无法处理的字符。</translation>
    </message>
    <message>
        <source>There is no catalogue yet.</source>
        <translation>尚无目录。</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there.</source>
        <translation>上次更新的备份仍然存在。</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>无法写入更新状态。</translation>
    </message>
    <message>
        <source>Version %1 lacks installed regions: %2.</source>
        <translation>版本 %1 缺少以下已安装的区域：%2。</translation>
    </message>
    <message>
        <source>The prepared maps cannot be written.</source>
        <translation>无法写入准备好的地图。</translation>
    </message>
</context>
<context>
    <name>DetailsPane</name>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>含 %n 张地图</numerusform>
        </translation>
    </message>
    <message>
        <source>Choose a map</source>
        <translation>选择地图</translation>
    </message>
    <message>
        <source>Its size, and what can be done with it, are shown here.</source>
        <translation>此处显示其大小和可用操作。</translation>
    </message>
</context>
<context>
    <name>DeviceSummary</name>
    <message>
        <source>No network</source>
        <translation>无网络</translation>
    </message>
    <message>
        <source>Wi-Fi or cable</source>
        <translation>Wi‑Fi 或有线网络</translation>
    </message>
    <message>
        <source>Mobile network</source>
        <translation>移动网络</translation>
    </message>
    <message>
        <source>%1 free</source>
        <translation>可用空间：%1</translation>
    </message>
</context>
<context>
    <name>DiskProbe</name>
    <message>
        <source>The disk takes no more data. Is it full?</source>
        <translation>磁盘无法再写入数据。是否已满？</translation>
    </message>
</context>
<context>
    <name>FolderExchange</name>
    <message>
        <source>%1 is missing.</source>
        <translation>缺少 %1。</translation>
    </message>
    <message>
        <source>%1 is in the way and cannot be renamed.</source>
        <translation>%1 占用了位置，且无法重命名。</translation>
    </message>
</context>
<context>
    <name>HttpFile</name>
    <message>
        <source>%1 gives status %2.</source>
        <translation>%1 返回状态 %2。</translation>
    </message>
    <message>
        <source>%1 is far too large.</source>
        <translation>%1 过大。</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>已中断。</translation>
    </message>
    <message>
        <source>%1 has been silent for %2 s.</source>
        <translation>%1 已有 %2 秒没有响应。</translation>
    </message>
    <message>
        <source>%1 cannot be reached: %2.</source>
        <translation>无法连接到 %1：%2。</translation>
    </message>
    <message>
        <source>%1 is compressed on the way, though it must not.</source>
        <translation>%1 在传输中被压缩，但不应如此。</translation>
    </message>
    <message>
        <source>%1 has changed while it was read.</source>
        <translation>%1 在读取过程中发生了变化。</translation>
    </message>
    <message>
        <source>%1 breaks off: %2.</source>
        <translation>%1 传输中断：%2。</translation>
    </message>
    <message>
        <source>%1 gives fewer bytes than it says.</source>
        <translation>%1 返回的字节数少于其声明的数量。</translation>
    </message>
    <message>
        <source>%1 gives more bytes than it says.</source>
        <translation>%1 返回的字节数多于其声明的数量。</translation>
    </message>
    <message>
        <source>%1 gives another part than was asked for.</source>
        <translation>%1 返回的部分与请求的不符。</translation>
    </message>
</context>
<context>
    <name>InstalledPage</name>
    <message>
        <source>Installed maps</source>
        <translation>已安装的地图</translation>
    </message>
    <message>
        <source>%1 free on this device</source>
        <translation>此设备可用空间：%1</translation>
    </message>
    <message>
        <source>Update %1</source>
        <translation>更新%1</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>删除%1</translation>
    </message>
    <message>
        <source>No map is installed</source>
        <translation>未安装地图</translation>
    </message>
    <message>
        <source>Installed maps work without any network. Choose the regions that you need.</source>
        <translation>已安装的地图无需网络即可使用。请选择需要的区域。</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>选择地图</translation>
    </message>
</context>
<context>
    <name>Main</name>
    <message>
        <source>Maps</source>
        <translation>地图</translation>
    </message>
    <message>
        <source>Opening the maps</source>
        <translation>正在打开地图</translation>
    </message>
    <message>
        <source>The maps cannot be opened</source>
        <translation>无法打开地图</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>已安装</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>传输</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>%1 is removed; %2 are free again.</source>
        <translation>已删除%1，释放了 %2。</translation>
    </message>
</context>
<context>
    <name>MapsSession</name>
    <message>
        <source>The server is silent. Try again later.</source>
        <translation>服务器没有响应。请稍后再试。</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you look for new maps.</source>
        <translation>查找新地图前，请等待传输完成或将其取消。</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>没有网络连接。</translation>
    </message>
    <message>
        <source>The list of maps is up to date (version %1).</source>
        <translation>地图列表已是最新（版本 %1）。</translation>
    </message>
    <message>
        <source>The server has newer maps (version %1). The installed ones stay at version %2.</source>
        <translation>服务器上有更新的地图（版本 %1）。已安装的地图保持版本 %2。</translation>
    </message>
</context>
<context>
    <name>MapsUpdate</name>
    <message>
        <source>All maps are being updated. No other map can be installed or removed until that is done.</source>
        <translation>正在更新所有地图。完成之前无法安装或删除其他地图。</translation>
    </message>
    <message>
        <source>An update of all maps is not finished. Go on with it, or give it up, before you install or remove maps.</source>
        <translation>所有地图的更新尚未完成。请先继续或放弃更新，然后再安装或删除地图。</translation>
    </message>
    <message>
        <source>The old maps of the last update are still kept. Remove them first.</source>
        <translation>上次更新的旧地图仍保留着。请先删除它们。</translation>
    </message>
    <message>
        <source>There is no network connection.</source>
        <translation>没有网络连接。</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>下载正在等待 Wi‑Fi。</translation>
    </message>
    <message>
        <source>The maps are being changed already.</source>
        <translation>地图正在更改中。</translation>
    </message>
    <message>
        <source>The maps are not open yet.</source>
        <translation>地图尚未打开。</translation>
    </message>
    <message>
        <source>The list of maps is being fetched. Wait until that is done.</source>
        <translation>正在获取地图列表。请等待完成。</translation>
    </message>
    <message>
        <source>Let the transfers end, or cancel them, before you update all maps.</source>
        <translation>更新所有地图之前，请等待传输完成或取消传输。</translation>
    </message>
    <message>
        <source>The old maps are being removed.</source>
        <translation>正在移除旧地图。</translation>
    </message>
</context>
<context>
    <name>NavButton</name>
    <message>
        <source>%1 (%2)</source>
        <translation>%1（%2）</translation>
    </message>
</context>
<context>
    <name>OldMapsCard</name>
    <message>
        <source>Old maps</source>
        <translation>旧地图</translation>
    </message>
    <message>
        <source>Kept version</source>
        <translation>保留的版本</translation>
    </message>
    <message>
        <source>Size</source>
        <translation>大小</translation>
    </message>
    <message>
        <source>Being measured</source>
        <translation>正在计算</translation>
    </message>
    <message>
        <source>Keep old maps</source>
        <translation>保留旧地图</translation>
    </message>
    <message>
        <source>Go back to version %1</source>
        <translation>恢复到版本 %1</translation>
    </message>
    <message>
        <source>Remove old maps</source>
        <translation>删除旧地图</translation>
    </message>
    <message>
        <source>Remove the backup</source>
        <translation>删除备份</translation>
    </message>
    <message>
        <source>Go back to version %1?</source>
        <translation>恢复到版本 %1？</translation>
    </message>
    <message>
        <source>The old maps are put in use again. The newer ones stay on this device until you remove them.</source>
        <translation>将重新使用旧地图。较新的地图会留在此设备上，直到您将其删除。</translation>
    </message>
    <message>
        <source>These maps were installed since and are not among the old ones: %1.</source>
        <translation>以下地图是之后安装的，不在旧地图之中：%1。</translation>
    </message>
    <message>
        <source>Go back</source>
        <translation>恢复</translation>
    </message>
    <message>
        <source>Remove the old maps?</source>
        <translation>删除旧地图？</translation>
    </message>
    <message>
        <source>This frees %1.</source>
        <translation>这将释放 %1。</translation>
    </message>
    <message>
        <source>You cannot go back to version %1 afterwards.</source>
        <translation>之后将无法恢复到版本 %1。</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Being removed</source>
        <translation>正在移除</translation>
    </message>
</context>
<context>
    <name>PageHeader</name>
    <message>
        <source>Back</source>
        <translation>返回</translation>
    </message>
</context>
<context>
    <name>PreparedSet</name>
    <message>
        <source>The folders %1 and %2 cannot be written.</source>
        <translation>无法写入文件夹 %1 和 %2。</translation>
    </message>
    <message>
        <source>The city index and config.cfg cannot be copied to the new maps.</source>
        <translation>无法将城市索引和 config.cfg 复制到新地图。</translation>
    </message>
    <message>
        <source>The file %1 cannot be removed.</source>
        <translation>无法删除文件 %1。</translation>
    </message>
    <message>
        <source>The state of the update cannot be written.</source>
        <translation>无法写入更新状态。</translation>
    </message>
</context>
<context>
    <name>ProgressLine</name>
    <message>
        <source>Progress is not known yet</source>
        <translation>进度未知</translation>
    </message>
    <message>
        <source>%1 %</source>
        <translation>%1%</translation>
    </message>
</context>
<context>
    <name>RegionDetails</name>
    <message>
        <source>Download</source>
        <translation>下载大小</translation>
    </message>
    <message>
        <source>Needs when installed</source>
        <translation>安装后占用</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>此设备</translation>
    </message>
    <message>
        <source>Cancel the download</source>
        <translation>取消下载</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>更新</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>安装</translation>
    </message>
</context>
<context>
    <name>RegionInstaller</name>
    <message>
        <source>The catalogue has no region &quot;%1&quot;.</source>
        <translation>目录中没有区域“%1”。</translation>
    </message>
    <message>
        <source>%1 is being installed already.</source>
        <translation>“%1”已在安装中。</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>目录中没有“%1”的可用地址。</translation>
    </message>
    <message>
        <source>%1 needs %2, but only %3 are free.</source>
        <translation>“%1”需要 %2，但可用空间只有 %3。</translation>
    </message>
    <message>
        <source>The list of pending installs could not be written.</source>
        <translation>无法写入待安装列表。</translation>
    </message>
    <message>
        <source>%1 is not being installed.</source>
        <translation>“%1”未在安装。</translation>
    </message>
    <message>
        <source>The files of %1 are being put into place already.</source>
        <translation>“%1”的文件已在就位中。</translation>
    </message>
    <message>
        <source>%1 is not installed.</source>
        <translation>“%1”未安装。</translation>
    </message>
    <message>
        <source>%1 is being installed; cancel that first.</source>
        <translation>正在安装“%1”；请先取消安装。</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>“%1”的压缩包中没有地图图块。</translation>
    </message>
    <message>
        <source>Files of %1 are missing after the install.</source>
        <translation>安装后缺少“%1”的文件。</translation>
    </message>
    <message>
        <source>The catalogue has no region &quot;%1&quot; any more.</source>
        <translation>目录中已没有区域“%1”。</translation>
    </message>
    <message>
        <source>%1 could not be recorded: the content file cannot be written.</source>
        <translation>无法登记“%1”：内容文件无法写入。</translation>
    </message>
    <message>
        <source>The server sent %1 bytes for %2, but the catalogue says %3; nothing was changed. Is there a log-in page in between, or is the catalogue old?</source>
        <translation>服务器为“%2”发送了 %1 字节，但目录中为 %3 字节；未作任何更改。是否被登录页面拦截，或者目录已过期？</translation>
    </message>
    <message>
        <source>The archive of %1 is damaged or could not be unpacked; nothing was changed.</source>
        <translation>“%1”的压缩包已损坏或无法解压；未作任何更改。</translation>
    </message>
    <message>
        <source>The files of %1 could not be put into place. Is the disk full?</source>
        <translation>“%1”的文件无法就位。磁盘是否已满？</translation>
    </message>
    <message>
        <source>The server refused to send the archive of %1.</source>
        <translation>服务器拒绝发送“%1”的压缩包。</translation>
    </message>
    <message>
        <source>The archive of %1 could not be downloaded: the server cannot be reached or does not have it.</source>
        <translation>无法下载“%1”的压缩包：无法连接服务器，或服务器上没有该文件。</translation>
    </message>
    <message>
        <source>The last install of %1 did not fail.</source>
        <translation>%1的上次安装并未失败。</translation>
    </message>
</context>
<context>
    <name>RegionRow</name>
    <message>
        <source>Installed</source>
        <translation>已安装</translation>
    </message>
    <message>
        <source>%1 on this device</source>
        <translation>占用 %1</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) inside</source>
        <translation>
            <numerusform>含 %n 张地图</numerusform>
        </translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1，%2</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
</context>
<context>
    <name>RegionSheet</name>
    <message>
        <source>Close</source>
        <translation>关闭</translation>
    </message>
</context>
<context>
    <name>RegionWords</name>
    <message>
        <source>Paused by you</source>
        <translation>已由您暂停</translation>
    </message>
    <message>
        <source>Waiting for Wi-Fi</source>
        <translation>等待 Wi‑Fi</translation>
    </message>
    <message>
        <source>Not installed</source>
        <translation>未安装</translation>
    </message>
    <message>
        <source>Waiting for its turn</source>
        <translation>排队等待中</translation>
    </message>
    <message>
        <source>Downloading, %1</source>
        <translation>正在下载，%1</translation>
    </message>
    <message>
        <source>Downloading</source>
        <translation>正在下载</translation>
    </message>
    <message>
        <source>Downloading %1 %</source>
        <translation>正在下载 %1%</translation>
    </message>
    <message>
        <source>Downloading %1 %, %2 left</source>
        <translation>正在下载 %1%，剩余 %2</translation>
    </message>
    <message>
        <source>Unpacking</source>
        <translation>正在解压</translation>
    </message>
    <message>
        <source>Unpacking %1 %</source>
        <translation>正在解压 %1%</translation>
    </message>
    <message>
        <source>Putting the files into place</source>
        <translation>正在放置文件</translation>
    </message>
    <message>
        <source>Finishing</source>
        <translation>正在完成</translation>
    </message>
    <message>
        <source>Installed</source>
        <translation>已安装</translation>
    </message>
    <message>
        <source>Cancelled</source>
        <translation>已取消</translation>
    </message>
    <message>
        <source>%1 s</source>
        <translation>%1 秒</translation>
    </message>
    <message>
        <source>%1 min</source>
        <translation>%1 分钟</translation>
    </message>
    <message>
        <source>%1 h %2 min</source>
        <translation>%1 小时 %2 分钟</translation>
    </message>
    <message>
        <source>Waiting for a network</source>
        <translation>等待网络</translation>
    </message>
</context>
<context>
    <name>RegionsPage</name>
    <message>
        <source>Maps to download</source>
        <translation>可下载的地图</translation>
    </message>
    <message>
        <source>All maps</source>
        <translation>所有地图</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>检查新地图</translation>
    </message>
    <message>
        <source>Search all maps</source>
        <translation>搜索所有地图</translation>
    </message>
    <message>
        <source>No map has this name</source>
        <translation>没有此名称的地图</translation>
    </message>
    <message>
        <source>Try fewer letters, or the name in another language.</source>
        <translation>请减少输入的字数，或尝试其他语言的名称。</translation>
    </message>
    <message>
        <source>No maps are known yet</source>
        <translation>尚无地图列表</translation>
    </message>
    <message>
        <source>Fetch the list of maps from the server first. It is small; the maps themselves are downloaded one by one, as you choose.</source>
        <translation>请先从服务器获取地图列表。列表很小；地图本身会按您的选择逐个下载。</translation>
    </message>
    <message>
        <source>Fetch the list</source>
        <translation>获取列表</translation>
    </message>
    <message>
        <source>All of %1</source>
        <translation>%1（全部）</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>详情</translation>
    </message>
    <message>
        <source>Install</source>
        <translation>安装</translation>
    </message>
</context>
<context>
    <name>RemoteArchive</name>
    <message>
        <source>%1 is encrypted.</source>
        <translation>%1 已加密。</translation>
    </message>
    <message>
        <source>%1: out of memory.</source>
        <translation>%1：内存不足。</translation>
    </message>
    <message>
        <source>%1 cannot be listed: its server gives only whole files.</source>
        <translation>无法列出 %1 的内容：服务器只提供完整文件。</translation>
    </message>
    <message>
        <source>%1 is damaged or no archive: %2.</source>
        <translation>%1 已损坏或不是压缩包：%2。</translation>
    </message>
    <message>
        <source>%1 does not tell how large its files are.</source>
        <translation>%1 未说明其中文件的大小。</translation>
    </message>
    <message>
        <source>%1 holds a file that may not be unpacked: &quot;%2&quot;.</source>
        <translation>%1 含有不允许解压的文件：“%2”。</translation>
    </message>
</context>
<context>
    <name>RemoveDialog</name>
    <message>
        <source>Remove %1?</source>
        <translation>要删除%1吗？</translation>
    </message>
    <message>
        <source>This frees %1 (%2).</source>
        <translation>将释放 %1（%2）。</translation>
    </message>
    <message numerus="yes">
        <source>%n file(s)</source>
        <translation>
            <numerusform>%n 个文件</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (%2) stay, because other installed maps need them.</source>
        <translation>%1（%2）将保留，因为其他已安装的地图需要它们。</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>删除</translation>
    </message>
    <message>
        <source>Looking at what this frees</source>
        <translation>正在计算可释放的空间</translation>
    </message>
</context>
<context>
    <name>SearchField</name>
    <message>
        <source>Clear the search</source>
        <translation>清除搜索</translation>
    </message>
</context>
<context>
    <name>ServerDialog</name>
    <message>
        <source>Content server</source>
        <translation>内容服务器</translation>
    </message>
    <message>
        <source>The address that maps are downloaded from.</source>
        <translation>下载地图的地址。</translation>
    </message>
    <message>
        <source>This is no http address.</source>
        <translation>这不是 http 地址。</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>取消</translation>
    </message>
    <message>
        <source>Use this server</source>
        <translation>使用此服务器</translation>
    </message>
</context>
<context>
    <name>SetRemoval</name>
    <message>
        <source>Another file system is mounted at %1; it cannot be removed.</source>
        <translation>%1 处挂载了另一个文件系统，无法删除。</translation>
    </message>
    <message>
        <source>%1 cannot be moved to a safe place.</source>
        <translation>无法将 %1 移到安全位置。</translation>
    </message>
</context>
<context>
    <name>SettingRow</name>
    <message>
        <source>%1: %2</source>
        <translation>%1：%2</translation>
    </message>
</context>
<context>
    <name>SettingsPage</name>
    <message>
        <source>As the system</source>
        <translation>跟随系统</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>浅色</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>深色</translation>
    </message>
    <message>
        <source>Off</source>
        <translation>关闭</translation>
    </message>
    <message>
        <source>Errors</source>
        <translation>错误</translation>
    </message>
    <message>
        <source>Errors and warnings</source>
        <translation>错误和警告</translation>
    </message>
    <message>
        <source>Information too</source>
        <translation>包括信息</translation>
    </message>
    <message>
        <source>Everything</source>
        <translation>全部</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>设置</translation>
    </message>
    <message>
        <source>Network</source>
        <translation>网络</translation>
    </message>
    <message>
        <source>No network</source>
        <translation>无网络</translation>
    </message>
    <message>
        <source>Connected over Wi-Fi or a cable</source>
        <translation>已通过 Wi‑Fi 或有线连接</translation>
    </message>
    <message>
        <source>Connected over a mobile network</source>
        <translation>已通过移动网络连接</translation>
    </message>
    <message>
        <source>Set by you</source>
        <translation>由您设置</translation>
    </message>
    <message>
        <source>Told by the system</source>
        <translation>来自系统</translation>
    </message>
    <message>
        <source>The system does not tell</source>
        <translation>系统未提供</translation>
    </message>
    <message>
        <source>Download over mobile networks</source>
        <translation>通过移动网络下载</translation>
    </message>
    <message>
        <source>May cost money. Off: downloads wait for Wi-Fi.</source>
        <translation>可能产生费用。关闭时，下载会等待 Wi‑Fi。</translation>
    </message>
    <message>
        <source>Set the network by hand</source>
        <translation>手动设置网络</translation>
    </message>
    <message>
        <source>For when the system does not know it.</source>
        <translation>用于系统无法判断网络状态时。</translation>
    </message>
    <message>
        <source>There is a network</source>
        <translation>网络可用</translation>
    </message>
    <message>
        <source>It is Wi-Fi or a cable</source>
        <translation>是 Wi‑Fi 或有线网络</translation>
    </message>
    <message>
        <source>On this device</source>
        <translation>此设备</translation>
    </message>
    <message>
        <source>Installed maps</source>
        <translation>已安装的地图</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s)</source>
        <translation>
            <numerusform>%n 张地图</numerusform>
        </translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>可用空间</translation>
    </message>
    <message>
        <source>Version of the maps</source>
        <translation>地图版本</translation>
    </message>
    <message>
        <source>Version of the map objects</source>
        <translation>地图对象版本</translation>
    </message>
    <message>
        <source>City index</source>
        <translation>城市索引</translation>
    </message>
    <message numerus="yes">
        <source>%n city package(s)</source>
        <translation>
            <numerusform>%n 个城市包</numerusform>
        </translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>文件夹</translation>
    </message>
    <message>
        <source>Server</source>
        <translation>服务器</translation>
    </message>
    <message>
        <source>Content server</source>
        <translation>内容服务器</translation>
    </message>
    <message>
        <source>List of maps</source>
        <translation>地图列表</translation>
    </message>
    <message numerus="yes">
        <source>%n map(s) to choose from</source>
        <translation>
            <numerusform>%n 张地图可供选择</numerusform>
        </translation>
    </message>
    <message>
        <source>The server has newer maps: version %1</source>
        <translation>服务器有更新的地图：版本 %1</translation>
    </message>
    <message>
        <source>Stop looking</source>
        <translation>停止检查</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>检查新地图</translation>
    </message>
    <message>
        <source>This app</source>
        <translation>此应用</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>外观</translation>
    </message>
    <message>
        <source>Log</source>
        <translation>日志</translation>
    </message>
    <message>
        <source>Version</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>所有地图的更新</translation>
    </message>
    <message>
        <source>Under way</source>
        <translation>进行中</translation>
    </message>
    <message>
        <source>Version %1 is on this device</source>
        <translation>版本 %1 已在此设备上</translation>
    </message>
    <message>
        <source>Version %1 is being prepared</source>
        <translation>正在准备版本 %1</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>没有已知的更新地图</translation>
    </message>
</context>
<context>
    <name>SwapCheck</name>
    <message>
        <source>An exchange of the map data was cut short. Start the program again first.</source>
        <translation>地图数据的替换被中断。请先重新启动程序。</translation>
    </message>
    <message>
        <source>&quot;%1&quot; cannot stand behind the name of a data set.</source>
        <translation>“%1”不能用作数据集名称的后缀。</translation>
    </message>
    <message>
        <source>The path %1 has a blank or another character that the update cannot handle. Move the map data to a folder with a plain name.</source>
        <translation>路径 %1 含有空格或更新无法处理的其他字符。请将地图数据移到名称简单的文件夹。</translation>
    </message>
    <message>
        <source>There is no prepared map data.</source>
        <translation>没有准备好的地图数据。</translation>
    </message>
    <message>
        <source>There is no backup to go back to.</source>
        <translation>没有可恢复的备份。</translation>
    </message>
    <message>
        <source>The backup of an earlier update is still there (%1). Remove it or go back to it first.</source>
        <translation>上次更新的备份仍然存在（%1）。请先将其删除或恢复。</translation>
    </message>
    <message>
        <source>Another update is being prepared (%1). Give it up first.</source>
        <translation>正在准备另一个更新（%1）。请先放弃它。</translation>
    </message>
    <message>
        <source>The folder %1 is missing.</source>
        <translation>缺少文件夹 %1。</translation>
    </message>
    <message>
        <source>%1 is a link or a file; it must be a folder.</source>
        <translation>%1 是链接或文件；它必须是文件夹。</translation>
    </message>
    <message>
        <source>Another file system is mounted at %1; it must be a folder of the file system around it.</source>
        <translation>%1 处挂载了另一个文件系统；它必须是所在文件系统中的文件夹。</translation>
    </message>
    <message>
        <source>%1 is in the way of the voice data.</source>
        <translation>%1 占用了语音数据的位置。</translation>
    </message>
    <message>
        <source>The folder %1 is write-protected.</source>
        <translation>文件夹 %1 受写保护。</translation>
    </message>
    <message>
        <source>There is no space left at %1.</source>
        <translation>%1 没有剩余空间。</translation>
    </message>
    <message>
        <source>%1 is missing or damaged.</source>
        <translation>%1 缺失或已损坏。</translation>
    </message>
    <message>
        <source>%1 is missing, damaged, or lists no regions.</source>
        <translation>%1 缺失、已损坏或不含任何区域。</translation>
    </message>
</context>
<context>
    <name>SwapJournal</name>
    <message>
        <source>%1 cannot be written (%2).</source>
        <translation>无法写入 %1（%2）。</translation>
    </message>
    <message>
        <source>The note %1 cannot be read.</source>
        <translation>无法读取记录 %1。</translation>
    </message>
    <message>
        <source>The note %1 is damaged or was not written by this program.</source>
        <translation>记录 %1 已损坏或不是由本程序写入。</translation>
    </message>
    <message>
        <source>The note %1 was written by a later version of this program.</source>
        <translation>记录 %1 由本程序的更新版本写入。</translation>
    </message>
    <message>
        <source>The note %1 is damaged.</source>
        <translation>记录 %1 已损坏。</translation>
    </message>
    <message>
        <source>%1 cannot be removed (%2).</source>
        <translation>无法删除 %1（%2）。</translation>
    </message>
</context>
<context>
    <name>TransfersPage</name>
    <message>
        <source>There is no network. Downloads go on as soon as there is one.</source>
        <translation>没有网络。连接后下载会自动继续。</translation>
    </message>
    <message>
        <source>Downloads wait for Wi-Fi.</source>
        <translation>下载正在等待 Wi‑Fi。</translation>
    </message>
    <message>
        <source>Transfers</source>
        <translation>传输</translation>
    </message>
    <message>
        <source>Resume</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Pause</source>
        <translation>暂停</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>使用移动网络</translation>
    </message>
    <message>
        <source>Try %1 again</source>
        <translation>重试%1</translation>
    </message>
    <message>
        <source>Cancel %1</source>
        <translation>取消%1</translation>
    </message>
    <message>
        <source>Nothing is being transferred</source>
        <translation>没有正在进行的传输</translation>
    </message>
    <message>
        <source>Maps that you choose to install are shown here until they are ready.</source>
        <translation>您选择安装的地图会显示在此处，直到准备就绪。</translation>
    </message>
    <message>
        <source>Choose maps</source>
        <translation>选择地图</translation>
    </message>
    <message>
        <source>Remove %1 from the list</source>
        <translation>从列表中移除%1</translation>
    </message>
    <message>
        <source>Clear ended transfers</source>
        <translation>清除已结束的传输</translation>
    </message>
</context>
<context>
    <name>UpdateBanner</name>
    <message>
        <source>The server has newer maps: version %1.</source>
        <translation>服务器上有更新的地图：版本 %1。</translation>
    </message>
    <message>
        <source>Show the update</source>
        <translation>显示更新</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>更新所有地图</translation>
    </message>
</context>
<context>
    <name>UpdateInspection</name>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 未提供可用的地图版本。</translation>
    </message>
    <message>
        <source>%1 cannot be written.</source>
        <translation>无法写入 %1。</translation>
    </message>
    <message>
        <source>The server&apos;s %1 is damaged or lists no regions.</source>
        <translation>服务器上的 %1 已损坏或不含任何区域。</translation>
    </message>
    <message>
        <source>The catalogue gives no usable address for %1.</source>
        <translation>目录中没有“%1”的可用地址。</translation>
    </message>
    <message>
        <source>Interrupted.</source>
        <translation>已中断。</translation>
    </message>
    <message>
        <source>The archive of %1 holds no map tiles.</source>
        <translation>“%1”的压缩包中没有地图图块。</translation>
    </message>
</context>
<context>
    <name>UpdatePage</name>
    <message>
        <source>The update waits</source>
        <translation>更新正在等待</translation>
    </message>
    <message>
        <source>Going back to the old maps</source>
        <translation>正在恢复到旧地图</translation>
    </message>
    <message>
        <source>The maps are being updated</source>
        <translation>正在更新地图</translation>
    </message>
    <message>
        <source>All maps are updated</source>
        <translation>所有地图均已更新</translation>
    </message>
    <message>
        <source>The update could not be finished</source>
        <translation>更新未能完成</translation>
    </message>
    <message>
        <source>Newer maps are ready</source>
        <translation>较新的地图已就绪</translation>
    </message>
    <message>
        <source>An update is not finished</source>
        <translation>更新尚未完成</translation>
    </message>
    <message>
        <source>There are newer maps</source>
        <translation>有更新的地图</translation>
    </message>
    <message>
        <source>No newer maps are known</source>
        <translation>没有已知的更新地图</translation>
    </message>
    <message>
        <source>There is no network that it may use. It goes on by itself as soon as there is one.</source>
        <translation>没有可用的网络。网络可用后会自动继续。</translation>
    </message>
    <message>
        <source>Asking the server for its version</source>
        <translation>正在查询服务器的版本</translation>
    </message>
    <message>
        <source>Fetching the list of maps of version %1</source>
        <translation>正在获取版本 %1 的地图列表</translation>
    </message>
    <message>
        <source>Preparing version %1</source>
        <translation>正在准备版本 %1</translation>
    </message>
    <message>
        <source>Preparing %1</source>
        <translation>正在准备 %1</translation>
    </message>
    <message>
        <source>Putting version %1 in use</source>
        <translation>正在启用版本 %1</translation>
    </message>
    <message>
        <source>Please wait</source>
        <translation>请稍候</translation>
    </message>
    <message>
        <source>Version %1 has taken the place of version %2.</source>
        <translation>版本 %1 已取代版本 %2。</translation>
    </message>
    <message>
        <source>The maps are of the newest version.</source>
        <translation>地图已是最新版本。</translation>
    </message>
    <message>
        <source>Version %1 does not have these installed maps any more:</source>
        <translation>版本 %1 不再包含以下已安装的地图：</translation>
    </message>
    <message>
        <source>The maps of version %1 are on this device. They can be put in use without a download.</source>
        <translation>版本 %1 的地图已在此设备上，无需下载即可启用。</translation>
    </message>
    <message>
        <source>The update to version %1 goes on where it ended. The maps in use stay as they are until it is done.</source>
        <translation>更新到版本 %1 会从中断处继续。完成之前，正在使用的地图保持不变。</translation>
    </message>
    <message>
        <source>All installed maps are updated together. The new ones are downloaded beside those in use, which can be gone back to afterwards.</source>
        <translation>所有已安装的地图会一起更新。新地图与正在使用的地图并存下载，之后可以恢复到原来的地图。</translation>
    </message>
    <message>
        <source>The server tells whether there are any.</source>
        <translation>是否有更新可向服务器查询。</translation>
    </message>
    <message>
        <source>Update of all maps</source>
        <translation>所有地图的更新</translation>
    </message>
    <message>
        <source>If you go on without them, they stay only in the old maps.</source>
        <translation>如果不带它们继续，它们将只保留在旧地图中。</translation>
    </message>
    <message>
        <source>%1 of %2</source>
        <translation>%1 / %2</translation>
    </message>
    <message>
        <source>Go on without them</source>
        <translation>不带它们继续</translation>
    </message>
    <message>
        <source>Try again</source>
        <translation>重试</translation>
    </message>
    <message>
        <source>Update all maps</source>
        <translation>更新所有地图</translation>
    </message>
    <message>
        <source>Use version %1</source>
        <translation>使用版本 %1</translation>
    </message>
    <message>
        <source>Go on</source>
        <translation>继续</translation>
    </message>
    <message>
        <source>Use the mobile network</source>
        <translation>使用移动网络</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>停止</translation>
    </message>
    <message>
        <source>Remove the newer maps</source>
        <translation>删除较新的地图</translation>
    </message>
    <message>
        <source>Give up</source>
        <translation>放弃</translation>
    </message>
    <message>
        <source>Look for new maps</source>
        <translation>检查新地图</translation>
    </message>
    <message>
        <source>Versions</source>
        <translation>版本</translation>
    </message>
    <message>
        <source>In use</source>
        <translation>使用中</translation>
    </message>
    <message>
        <source>None</source>
        <translation>无</translation>
    </message>
    <message>
        <source>Newer</source>
        <translation>较新</translation>
    </message>
    <message>
        <source>On the server</source>
        <translation>服务器上</translation>
    </message>
    <message>
        <source>Free space</source>
        <translation>可用空间</translation>
    </message>
    <message>
        <source>Unknown</source>
        <translation>未知</translation>
    </message>
    <message>
        <source>Remove the newer maps?</source>
        <translation>删除较新的地图？</translation>
    </message>
    <message>
        <source>Give the update up?</source>
        <translation>放弃更新？</translation>
    </message>
    <message>
        <source>What was downloaded of version %1 is removed. The maps in use stay as they are.</source>
        <translation>将删除已下载的版本 %1 的内容。正在使用的地图保持不变。</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>删除</translation>
    </message>
</context>
<context>
    <name>UpdateSpace</name>
    <message>
        <source>The update needs up to %1 below %2 beside the maps in use, but only %3 are free.</source>
        <translation>除正在使用的地图外，更新最多还需要在 %2 中占用 %1，但可用空间只有 %3。</translation>
    </message>
</context>
<context>
    <name>VersionProbe</name>
    <message>
        <source>%1 cannot be reached, or it is no map server.</source>
        <translation>无法连接到 %1，或者它不是地图服务器。</translation>
    </message>
    <message>
        <source>%1 names no usable map version.</source>
        <translation>%1 未提供可用的地图版本。</translation>
    </message>
</context>
</TS>
