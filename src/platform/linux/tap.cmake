target_sources(kestrelbay_platform PRIVATE
)
